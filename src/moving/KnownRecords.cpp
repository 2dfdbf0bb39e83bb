#include "moving/KnownRecords.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

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

}  // namespace

KnownRecords::KnownRecords(adodb::Connection& connection, const TableShape& shape,
                           const std::function<QString(const QString&)>& identifier)
    : m_shape(&shape), m_identifier(identifier), m_columns(shape.Rule().MatchColumns()) {
  m_matches.resize(shape.Rule().same.size() + 1);
  const database::Table& table = shape.Here();
  const bool marks = table.FindColumn(u"Eliminado") != nullptr;
  QStringList names;
  for (const database::Column& column : table.columns) {
    names.append(u'[' + column.name + u']');
  }
  const auto rows = adodb::Execute(connection, u"SELECT {} FROM [{}] ORDER BY {}{}", Verbatim{names.join(u", ")},
                                   Verbatim{table.name}, Verbatim{marks ? u"Eliminado DESC, "_s : QString()},
                                   Verbatim{names.front()});
  for (; !rows->AtEnd(); rows->MoveNext()) {
    QList<Value> values(qsizetype(table.columns.size()));
    for (const int position : shape.Positions()) {
      values[position] = FromField(rows->Field(position));
    }
    const RowFacts facts = shape.FactsOf(values);
    const bool isLive = !marks || !automation::CBool(rows->Field(u"Eliminado"));
    m_keys.insert(facts.key);
    m_highest = qMax(m_highest, facts.key);
    m_same[Signature(facts)].append(facts.key);
    if (!isLive) {
      m_deleted.insert(facts.key);
    } else if (const auto at = m_columns.indexOf(shape.Rule().beside); at >= 0) {
      m_names.insert(facts.match[at]);
    }
    if (isLive || shape.Rule().unique.isEmpty()) {
      const QStringList texts = MatchTexts(facts);
      for (qsizetype i = 0; i < texts.size(); ++i) {
        if (!texts[i].isEmpty() && (isLive || !m_matches[i].contains(texts[i]))) {
          m_matches[i].insert(texts[i], facts.key);
        }
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
  texts.append(number.isEmpty() || !m_identifier ? QString() : m_identifier(number));
  return texts;
}

qint64 KnownRecords::Find(const RowFacts& facts) {
  if (const auto same = m_same.find(Signature(facts)); same != m_same.end() && !same->isEmpty()) {
    const auto own = same->indexOf(facts.key);
    return same->takeAt(qMax(own, qsizetype(0)));
  }
  const QStringList texts = MatchTexts(facts);
  for (qsizetype i = 0; i < texts.size(); ++i) {
    if (!texts[i].isEmpty()) {
      if (const qint64 key = m_matches[i].value(texts[i]); key != 0) {
        return key;
      }
    }
  }
  return 0;
}

}  // namespace moving
