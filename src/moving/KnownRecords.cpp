#include "moving/KnownRecords.h"

#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <algorithm>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace moving {

namespace {

Value FromField(const QVariant& field) {
  if (automation::IsNull(field) || !field.isValid()) {
    return {};
  }
  if (field.typeId() == QMetaType::Bool) {
    return {Value::Kind::Number, field.toBool() ? u"-1"_s : u"0"_s};
  }
  if (field.typeId() == QMetaType::QString) {
    return {Value::Kind::Text, field.toString()};
  }
  return {Value::Kind::Number, QString::number(field.toDouble(), 'g', 17)};
}

quint64 Signature(const RowFacts& facts) {
  return qHashMulti(facts.content, facts.references);
}

QString KeyOf(const database::Table& table) {
  return table.columns.front().name;
}

QString ColumnList(const database::Table& table) {
  QStringList names;
  for (const database::Column& column : table.columns) {
    names.append(u'[' + column.name + u']');
  }
  return names.join(u", ");
}

QList<Value> ValuesOf(adodb::Recordset& row, const TableShape& shape) {
  QList<Value> values(qsizetype(shape.Here().columns.size()));
  for (const int position : shape.Positions()) {
    values[position] = FromField(row.Field(position));
  }
  return values;
}

}  // namespace

KnownRecords::KnownRecords(adodb::Connection& connection, const TableShape& shape, const ImportWishes& wishes)
    : m_shape(&shape), m_wishes(&wishes), m_columns(shape.Rule().MatchColumns()) {
  m_matches.resize(shape.Rule().same.size() + 1);
  const database::Table& table = shape.Here();
  const bool marks = table.FindColumn(u"Eliminado") != nullptr;
  const auto rows =
      adodb::Execute(connection, u"SELECT {} FROM [{}] ORDER BY {}[{}]", Verbatim{ColumnList(table)},
                     Verbatim{table.name}, Verbatim{marks ? u"Eliminado DESC, "_s : QString()}, Verbatim{KeyOf(table)});
  for (; !rows->AtEnd(); rows->MoveNext()) {
    if (wishes.stop && wishes.stop()) {
      throw automation::Error(adodb::Stopped, u"Se ha cancelado. No se ha traído nada."_s);
    }
    const QList<Value> values = ValuesOf(*rows, shape);
    const bool isLive = !marks || !automation::CBool(rows->Field(u"Eliminado"));
    const RowFacts facts = shape.FactsOf(values);
    Take(facts, isLive);
    if (isLive && shape.Rule().asks) {
      m_live.append({QString::number(facts.key), shape.LabelOf(values)});
    }
  }
  std::ranges::sort(m_live, {}, &Choice::text);
}

void KnownRecords::Take(const RowFacts& facts, bool isLive) {
  m_keys.insert(facts.key);
  m_highest = qMax(m_highest, facts.key);
  m_same[Signature(facts)].append(facts.key);
  if (!isLive) {
    m_deleted.insert(facts.key);
  } else {
    if (const auto at = m_columns.indexOf(m_shape->Rule().beside); at >= 0) {
      m_names.insert(facts.match[at], facts.key);
    }
    if (!facts.alike.isEmpty()) {
      m_alike.insert(facts.alike, facts.key);
    }
  }
  if (isLive || m_shape->Rule().unique.isEmpty()) {
    const QStringList texts = MatchTexts(facts);
    for (qsizetype i = 0; i < texts.size(); ++i) {
      if (!texts[i].isEmpty() && (isLive || !m_matches[i].contains(texts[i]))) {
        m_matches[i].insert(texts[i], facts.key);
      }
    }
  }
}

QString KnownRecords::PartOf(const RowFacts& facts, const QString& column) const {
  const int position = m_shape->PositionOf(column);
  for (qsizetype i = 0; i < m_shape->References().size(); ++i) {
    if (m_shape->References()[i].position == position) {
      return facts.references[i] == 0 ? QString() : QString::number(facts.references[i]);
    }
  }
  return facts.match[m_columns.indexOf(column)];
}

QStringList KnownRecords::MatchTexts(const RowFacts& facts) const {
  QStringList texts;
  for (const QStringList& rule : m_shape->Rule().same) {
    QStringList parts;
    for (const QString& column : rule) {
      parts.append(PartOf(facts, column));
    }
    texts.append(parts.contains(QString()) ? QString() : parts.join(u'|'));
  }
  const QString number = m_shape->Rule().identifier.isEmpty() ? QString() : PartOf(facts, m_shape->Rule().identifier);
  texts.append(number.isEmpty() || !m_wishes->identifier ? QString() : m_wishes->identifier(number));
  return texts;
}

KnownRecords::Found KnownRecords::Find(const RowFacts& facts) {
  if (const auto same = m_same.find(Signature(facts)); same != m_same.end() && !same->isEmpty()) {
    const auto own = same->indexOf(facts.key);
    return {same->takeAt(qMax(own, qsizetype(0))), true};
  }
  const QStringList texts = MatchTexts(facts);
  for (qsizetype i = 0; i < texts.size(); ++i) {
    if (!texts[i].isEmpty()) {
      if (const qint64 key = m_matches[i].value(texts[i]); key != 0) {
        return {key, false};
      }
    }
  }
  return {m_shape->Rule().settings.isEmpty() ? 0 : m_highest, false};
}

QList<Value> ReadRecord(adodb::Connection& connection, const TableShape& shape, qint64 key) {
  const database::Table& table = shape.Here();
  const auto rows = adodb::Execute(connection, u"SELECT {} FROM [{}] WHERE [{}]={}", Verbatim{ColumnList(table)},
                                   Verbatim{table.name}, Verbatim{KeyOf(table)}, key);
  return rows->AtEnd() ? QList<Value>(qsizetype(table.columns.size())) : ValuesOf(*rows, shape);
}

}  // namespace moving
