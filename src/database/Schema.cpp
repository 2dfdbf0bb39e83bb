#include "database/Schema.h"

#include "database/Errors.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

static void InitializeResources() {
  Q_INIT_RESOURCE(schema);
}

namespace database {

namespace {

struct TypeName {
  QStringView name;
  ColumnType type;
};

constexpr TypeName typeNames[] = {
    {u"key", ColumnType::Key},           {u"id", ColumnType::Id},           {u"text", ColumnType::Text},
    {u"longtext", ColumnType::LongText}, {u"boolean", ColumnType::Boolean}, {u"integer", ColumnType::Integer},
    {u"decimal", ColumnType::Decimal},   {u"money", ColumnType::Money},
};

// Reads one line at a time; every problem is reported with its line.
class DescriptionReader {
 public:
  explicit DescriptionReader(std::vector<Table>& tables) : m_tables(tables) {}

  void ReadLine(QStringView text) {
    ++m_line;
    QStringList words = text.toString().simplified().split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty() || words.first().startsWith(u'#')) {
      return;
    }
    const int since = TakeSince(words);
    const QString kind = words.takeFirst();
    if (kind == u"table" && words.size() == 1) {
      AddTable(words.first(), since);
    } else if (kind == u"column" && (words.size() == 2 || (words.size() == 3 && words.last() == u"null"))) {
      AddColumn(words[0], words[1], words.size() == 3, since);
    } else if ((kind == u"index" || kind == u"unique" || kind == u"unique_live") && !words.isEmpty()) {
      AddIndex(words, kind, since);
    } else {
      throw BadSchema(m_line, u"no se entiende"_s);
    }
  }

 private:
  Table& Current() {
    if (m_tables.empty()) {
      throw BadSchema(m_line, u"falta la tabla"_s);
    }
    return m_tables.back();
  }

  int TakeSince(QStringList& words) {
    const QString mark = u"since="_s;
    if (!words.last().startsWith(mark)) {
      return m_tables.empty() || words.first() == u"table" ? 1 : m_tables.back().since;
    }
    bool isNumber = false;
    const int since = words.takeLast().mid(mark.size()).toInt(&isNumber);
    if (!isNumber || since < 1 || words.isEmpty()) {
      throw BadSchema(m_line, u"versión incorrecta"_s);
    }
    return since;
  }

  void AddTable(const QString& name, int since) {
    const bool repeated = std::any_of(m_tables.begin(), m_tables.end(), [&](const Table& table) {
      return table.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (repeated) {
      throw BadSchema(m_line, u"tabla repetida"_s);
    }
    Table table;
    table.name = name;
    table.since = since;
    m_tables.push_back(std::move(table));
  }

  void AddColumn(const QString& name, const QString& typeText, bool nullable, int since) {
    static const QRegularExpression form(u"^([a-z]+)(?:\\((\\d{1,5})\\))?$"_s);
    const QRegularExpressionMatch match = form.match(typeText);
    const auto found = std::find_if(std::begin(typeNames), std::end(typeNames),
                                    [&](const TypeName& candidate) { return candidate.name == match.captured(1); });
    if (!match.hasMatch() || found == std::end(typeNames)) {
      throw BadSchema(m_line, u"tipo desconocido"_s);
    }
    Table& table = Current();
    if (table.FindColumn(name) != nullptr || (found->type == ColumnType::Key) != table.columns.empty()) {
      throw BadSchema(m_line, u"columna repetida o clave fuera de su sitio"_s);
    }
    Column column;
    column.name = name;
    column.type = found->type;
    column.length = match.captured(2).toInt();
    column.required = IsNumericType(found->type) && !nullable;
    column.defaultValue = column.required && found->type != ColumnType::Key ? u"0"_s : QString();
    column.since = since;
    table.columns.push_back(std::move(column));
  }

  void AddIndex(const QStringList& columns, const QString& kind, int since) {
    Table& table = Current();
    for (const QString& column : columns) {
      if (table.FindColumn(column) == nullptr) {
        throw BadSchema(m_line, u"el índice nombra una columna que no existe"_s);
      }
    }
    Index index;
    index.name = u"ix_"_s + table.name + u'_' + columns.join(u'_');
    index.columns = columns;
    index.unique = kind != u"index";
    index.liveOnly = kind == u"unique_live";
    index.since = since;
    table.indexes.push_back(std::move(index));
  }

  std::vector<Table>& m_tables;
  int m_line = 0;
};

}  // namespace

const Column* Table::FindColumn(QStringView columnName) const {
  for (const Column& column : columns) {
    if (columnName.compare(column.name, Qt::CaseInsensitive) == 0) {
      return &column;
    }
  }
  return nullptr;
}

Schema Schema::Parse(QStringView description) {
  Schema schema;
  DescriptionReader reader(schema.m_tables);
  for (const QStringView line : description.split(u'\n')) {
    reader.ReadLine(line);
  }
  for (std::size_t i = 0; i < schema.m_tables.size(); ++i) {
    const Table& table = schema.m_tables[i];
    schema.m_byName.insert(table.name.toCaseFolded(), i);
    schema.m_version = std::max(schema.m_version, table.since);
    for (const Column& column : table.columns) {
      schema.m_version = std::max(schema.m_version, column.since);
    }
    for (const Index& index : table.indexes) {
      schema.m_version = std::max(schema.m_version, index.since);
    }
  }
  return schema;
}

const Schema& Schema::Current() {
  static const Schema schema = [] {
    InitializeResources();
    QFile file(u":/kel/schema/schema.txt"_s);
    if (!file.open(QIODevice::ReadOnly)) {
      throw BadSchema(0, u"falta la descripción"_s);
    }
    return Parse(QString::fromUtf8(file.readAll()));
  }();
  return schema;
}

const Table* Schema::FindTable(QStringView name) const {
  const auto found = m_byName.constFind(name.toString().toCaseFolded());
  return found == m_byName.cend() ? nullptr : &m_tables[*found];
}

const Table* Schema::ReferredTable(const Column& column) const {
  if (column.type != ColumnType::Id || !column.name.startsWith(u"Cod"_s, Qt::CaseInsensitive)) {
    return nullptr;
  }
  const QStringView what = QStringView(column.name).mid(3);
  const Table* beginning = nullptr;
  for (const Table& table : m_tables) {
    const QStringView key = QStringView(table.columns.front().name).mid(2);
    if (key.compare(what, Qt::CaseInsensitive) == 0) {
      return &table;
    }
    if (what.startsWith(key, Qt::CaseInsensitive) ||
        key.compare(u"Tipo"_s + what.toString(), Qt::CaseInsensitive) == 0) {
      beginning = &table;
    }
  }
  return beginning;
}

int SchemaVersion() {
  return Schema::Current().Version();
}

}  // namespace database
