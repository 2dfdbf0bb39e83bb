#include "host/records/ChangeNote.h"

#include "host/records/NodeCatalog.h"
#include "host/records/RecordReader.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

using Kind = database::WrittenRecord::Kind;

constexpr qsizetype longestText = 200;

bool IsMark(const database::Column& column) {
  return column.name.compare(u"Eliminado"_s, Qt::CaseInsensitive) == 0;
}

// A text without a usual length, such as a letter, is told by its length only.
bool IsLong(const database::Column& column) {
  return column.type == database::ColumnType::LongText;
}

// What a row has where nobody entered anything.
bool IsNothing(const QVariant& value) {
  return automation::IsNull(value) || value.toString().isEmpty() ||
         (automation::IsNumeric(value) && automation::CDbl(value) == 0);
}

const Node* NodeOf(const QString& table) {
  const std::vector<Node>& nodes = NodeCatalog();
  const auto found = std::ranges::find_if(
      nodes, [&](const Node& node) { return node.table.compare(table, Qt::CaseInsensitive) == 0; });
  return found == nodes.end() ? nullptr : &*found;
}

// All values of a row, lengths for those of long texts.
QString RowStatement(const database::Table& table, qint64 key) {
  QStringList values;
  for (const database::Column& column : table.columns) {
    values.append(IsLong(column) ? u"LEN(%1) AS Longitud%1"_s.arg(column.name) : column.name);
  }
  return adodb::StatementText(u"SELECT {} FROM {} WHERE {}={}", adodb::Verbatim{values.join(u", "_s)},
                              adodb::Verbatim{table.name}, adodb::Verbatim{table.columns.front().name}, key);
}

}  // namespace

QStringList NotedCourse(const QString& statement, const database::WrittenRecord& written) {
  if (written.kind == Kind::Inserted || written.key.value_or(0) == 0) {
    return {};
  }
  const QString row = RowStatement(*database::Schema::Current().FindTable(written.table), *written.key);
  QStringList course{row, statement, row};
  if (const Node* node = NodeOf(written.table)) {
    course.insert(1, RecordStatement(*node, static_cast<int>(*written.key)));
  }
  return course;
}

ChangeNote::ChangeNote(adodb::Connection& engine, const database::WrittenRecord& written)
    : m_engine(engine),
      m_written(written),
      m_table(*database::Schema::Current().FindTable(written.table)),
      m_key(written.key.value_or(0)) {
  if (m_key != 0 && written.kind != Kind::Inserted) {
    m_before = Read();
    m_name = Name(m_before);
  }
}

ChangeNote::Row ChangeNote::Read() const {
  const auto rows = m_engine.Execute(RowStatement(m_table, m_key));
  Row row;
  for (int i = 0; !rows->AtEnd() && i < rows->FieldCount(); ++i) {
    row.append(rows->Field(i));
  }
  return row;
}

// As the lists name it; a row that no list has, or a deleted one, by its own name.
QString ChangeNote::Name(const Row& row) const {
  const Node* node = row.isEmpty() ? nullptr : NodeOf(m_table.name);
  QString name = node == nullptr ? QString() : RecordName(m_engine, *node, static_cast<int>(m_key));
  for (qsizetype i = 0; name.isEmpty() && i < row.size(); ++i) {
    if (m_table.columns[static_cast<std::size_t>(i)].name.compare(u"Nombre"_s, Qt::CaseInsensitive) == 0) {
      name = automation::Text(row[i]);
    }
  }
  return name.left(longestText);
}

void ChangeNote::FindNewKey() {
  if (const std::optional<qint64> key = database::NewKeyOf(m_engine, m_table.name)) {
    m_key = *key;
    return;
  }
  const auto rows = adodb::Execute(m_engine, u"SELECT MAX({}) AS Maximo FROM {}",
                                   adodb::Verbatim{m_table.columns.front().name}, adodb::Verbatim{m_table.name});
  m_key = automation::CLng(rows->Field(0));
}

ChangeKind ChangeNote::KindOf(const Row& now) const {
  if (m_written.kind == Kind::Inserted) {
    return ChangeKind::Added;
  }
  if (now.isEmpty()) {
    return ChangeKind::Deleted;
  }
  const auto mark = std::ranges::find_if(m_table.columns, IsMark);
  const auto place = mark - m_table.columns.begin();
  if (mark == m_table.columns.end() || m_before[place] == now[place]) {
    return ChangeKind::Changed;
  }
  return automation::CBool(now[place]) ? ChangeKind::Deleted : ChangeKind::Recovered;
}

// A length says nothing of what else was written.
bool ChangeNote::MayDiffer(const database::Column& column) const {
  return IsLong(column) && m_written.columns.contains(column.name, Qt::CaseInsensitive);
}

QList<ColumnChange> ChangeNote::Differences(const Row& now) const {
  QList<ColumnChange> changes;
  for (qsizetype i = 1; i < now.size(); ++i) {
    const database::Column& column = m_table.columns[static_cast<std::size_t>(i)];
    const QVariant before = m_before.value(i);
    const bool differs = m_before.isEmpty() ? !IsNothing(now[i]) : before != now[i] || MayDiffer(column);
    if (differs && !IsMark(column)) {
      changes.append(
          {column.name, automation::Text(before).left(longestText), automation::Text(now[i]).left(longestText)});
    }
  }
  return changes;
}

std::optional<Change> ChangeNote::After(qint64 rows) {
  if (rows == 0) {
    return std::nullopt;
  }
  Change change;
  change.table = m_table.name;
  change.rows = static_cast<int>(rows);
  if (m_written.makesKey) {
    FindNewKey();
  }
  if (m_key == 0) {
    change.kind = ChangeKind::Several;
    change.name = m_written.condition.left(longestText);
    return change;
  }
  const Row now = Read();
  change.columns = Differences(now);
  if (now == m_before && change.columns.isEmpty()) {
    return std::nullopt;
  }
  change.key = m_key;
  change.kind = KindOf(now);
  change.name = m_name.isEmpty() || change.kind == ChangeKind::Recovered ? Name(now) : m_name;
  return change;
}

}  // namespace host
