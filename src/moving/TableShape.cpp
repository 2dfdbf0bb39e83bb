#include "moving/TableShape.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

using database::Column;

// One form for each value, whoever stored it; what a column has without a value counts as that.
QString Canonical(const Column& column, const Value& value) {
  constexpr int digits = 15;
  if (value.kind == Value::Kind::Number) {
    return QString::number(value.text.toDouble(), 'g', digits);
  }
  const bool isZero = value.kind == Value::Kind::None && database::IsNumericType(column.type) && column.required;
  return isZero ? u"0"_s : value.text;
}

}  // namespace

TableShape::TableShape(const TableMatch& match) : m_rule(match.rule) {
  const std::vector<Column>& columns = m_rule->table->columns;
  const database::Schema& schema = database::Schema::Current();
  m_positions.append(0);
  m_deleted = PositionOf(u"Eliminado"_s);
  m_beside = PositionOf(m_rule->beside);
  m_free = PositionOf(m_rule->freeText);
  m_grant = PositionOf(m_rule->grant);
  for (int i = 1; i < int(columns.size()); ++i) {
    const Column& column = columns[std::size_t(i)];
    if (!match.columns.contains(&column)) {
      m_deleted = i == m_deleted ? -1 : m_deleted;
      continue;
    }
    m_positions.append(i);
    const bool isDemoted = i == m_deleted && !m_rule->unique.isEmpty();
    const bool isOwner = m_rule->owners.contains(column.name, Qt::CaseInsensitive);
    const bool isOurs = i == m_grant || m_rule->zeros.contains(column.name);
    if (const database::Table* target = schema.ReferredTable(column)) {
      m_references.append({i, target, isOwner});
    } else if (!isDemoted && !isOurs) {
      m_content.append(i);
    }
    if (i != m_deleted && !isOwner && !isOurs) {
      m_changeable.append(i);
    }
    constexpr qsizetype labelled = 3;
    if (column.type == database::ColumnType::Text && m_label.size() < labelled) {
      m_label.append(i);
    }
  }
  for (const QString& name : m_rule->MatchColumns()) {
    m_match.append(PositionOf(name));
  }
  for (const QString& name : m_rule->alike) {
    m_alike.append(PositionOf(name));
  }
}

int TableShape::PositionOf(const QString& name) const {
  const Column* column = name.isEmpty() ? nullptr : m_rule->table->FindColumn(name);
  return column == nullptr ? -1 : int(column - m_rule->table->columns.data());
}

RowFacts TableShape::FactsOf(const QList<Value>& values) const {
  RowFacts facts;
  facts.key = values.front().ToId();
  for (const int position : m_content) {
    const Column& column = m_rule->table->columns[std::size_t(position)];
    const QString text = Canonical(column, values[position]);
    facts.content = qHashMulti(facts.content, Plain(position, text));
  }
  for (const Reference& reference : m_references) {
    facts.references.append(values[reference.position].ToId());
  }
  for (const int position : m_match) {
    const QString text = Canonical(m_rule->table->columns[std::size_t(position)], values[position]);
    const QString folded = FoldedName(text);
    facts.match.append(folded.isEmpty() ? text : folded);
  }
  QStringList alike;
  for (const int position : m_alike) {
    alike.append(FoldedName(values[position].text));
  }
  facts.alike = alike.contains(QString()) ? QString() : alike.join(u'|');
  facts.isGranted = m_grant >= 0 && values[m_grant].ToId() != 0;
  facts.isLive = m_deleted < 0 || values[m_deleted].ToId() == 0;
  return facts;
}

bool TableShape::IsReference(int position) const {
  return std::ranges::find(m_references, position, &Reference::position) != m_references.end();
}

bool TableShape::AreSame(int position, const Value& one, const Value& other) const {
  const Column& column = m_rule->table->columns[std::size_t(position)];
  return Canonical(column, one) == Canonical(column, other);
}

QString TableShape::LabelOf(const QList<Value>& values) const {
  QStringList texts;
  for (const int position : m_label) {
    texts += Shown(values[position]);
  }
  texts.removeAll(QString());
  return texts.join(u" · "_s);
}

// Without what coming in may have put before or behind it.
QString TableShape::Plain(int position, QString text) const {
  static const QRegularExpression number(u" \\([0-9]+\\)$"_s);
  if (position == m_beside) {
    text.remove(number);
  }
  return position == m_free && text.startsWith(u'*') ? text.mid(1) : text;
}

}  // namespace moving
