#include "host/mailing/selection/Conditions.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::StatementText;
using adodb::Verbatim;

namespace host {

namespace {

struct Row {
  const char16_t* word;
  const char16_t* table;
  const char16_t* key;
  const char16_t* title;
};

constexpr std::array<Row, conditionCount> rows{{
    {u"Publicacion", u"TipoPublicaciones", u"IDTipoPublicacion", u"publicación"},
    {u"TipoDonativo", u"TipoDonativos", u"IDTipoDonativo", u"tipo de donativo"},
    {u"Emisor", u"Emisores", u"IDEmisor", u"emisor"},
    {u"Diocesis", u"Diocesis", u"IDDiocesis", u"diócesis"},
    {u"Provincia", u"Provincias", u"IDProvincia", u"provincia"},
    {u"Comunidad", u"ComunidadAutonoma", u"IDComunidad", u"comunidad"},
    {u"Pais", u"Paises", u"IDPais", u"país"},
    {u"Cobrador", u"Cobradores", u"IDCobrador", u"cobrador"},
    {u"Encabezado", u"Encabezados", u"IDEncabezado", u"encabezado"},
}};

const QString from = u"DonativosDesde"_s;
const QString until = u"DonativosHasta"_s;

QString Listed(const QList<int>& values) {
  QStringList texts;
  for (const int value : values) {
    texts.append(QString::number(value));
  }
  return texts.join(u',');
}

QList<int> Numbers(const QString& text, bool& valid) {
  QList<int> numbers;
  for (const QString& word : text.split(u',')) {
    bool isNumber = false;
    numbers.append(word.trimmed().toInt(&isNumber));
    valid = valid && isNumber;
  }
  return numbers;
}

bool ReadLine(const QString& word, const QString& value, Conditions& conditions) {
  bool valid = true;
  if (word == from || word == until) {
    QDate& date = word == from ? conditions.donationsFrom : conditions.donationsUntil;
    date = QDate::fromString(value, Qt::ISODate);
    return date.isValid();
  }
  const auto row = std::ranges::find(rows, word, [](const Row& known) { return QString::fromUtf16(known.word); });
  if (row == rows.end()) {
    return false;
  }
  conditions.values[static_cast<std::size_t>(row - rows.begin())] = Numbers(value, valid);
  return valid;
}

QString DonationClause(const Conditions& conditions) {
  QString clause;
  if (!conditions.Of(Condition::DonationType).isEmpty()) {
    clause += StatementText(u" AND CodTipoDonativo IN ({})", Verbatim{Listed(conditions.Of(Condition::DonationType))});
  }
  if (conditions.donationsFrom.isValid()) {
    clause += StatementText(u" AND Fecha>='{}'", conditions.donationsFrom.toString(Qt::ISODate));
  }
  if (conditions.donationsUntil.isValid()) {
    clause += StatementText(u" AND Fecha<='{}'", conditions.donationsUntil.toString(Qt::ISODate));
  }
  return clause.isEmpty() ? clause
                          : StatementText(
                                u" AND Colaboradores.IDColaborador IN (SELECT CodColaborador FROM Donativos "
                                u"WHERE Eliminado=0{})",
                                Verbatim{clause});
}

}  // namespace

QString TextOf(const Conditions& conditions) {
  QStringList lines;
  for (std::size_t i = 0; i < conditionCount; ++i) {
    if (!conditions.values[i].isEmpty()) {
      lines.append(QString::fromUtf16(rows[i].word) + u'=' + Listed(conditions.values[i]));
    }
  }
  for (const auto& [word, date] : {std::pair(from, conditions.donationsFrom), {until, conditions.donationsUntil}}) {
    if (date.isValid()) {
      lines.append(word + u'=' + date.toString(Qt::ISODate));
    }
  }
  return lines.join(u'\n');
}

Conditions ConditionsIn(const QString& text) {
  Conditions conditions;
  for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
    if (!ReadLine(line.section(u'=', 0, 0).trimmed(), line.section(u'=', 1).trimmed(), conditions)) {
      throw automation::Error(automation::InvalidProcedureCall,
                              u"La condición «%1» no se entiende. Vuelva a guardar la selección."_s.arg(line));
    }
  }
  return conditions;
}

QString ClauseOf(const Conditions& conditions) {
  QString clause;
  const auto add = [&](Condition condition, auto&& statement) {
    const QList<int>& values = conditions.Of(condition);
    clause += values.isEmpty() ? QString() : statement(Verbatim{Listed(values)});
  };
  add(Condition::Publication, [](const Verbatim& keys) {
    return StatementText(
        u" AND Colaboradores.IDColaborador IN (SELECT CodColaborador FROM Suscripciones WHERE "
        u"Eliminado=0 AND CodTipoPublicacion IN ({}))",
        keys);
  });
  clause += DonationClause(conditions);
  add(Condition::Issuer, [](const Verbatim& keys) {
    return StatementText(
        u" AND (Colaboradores.IDColaborador IN (SELECT CodColaborador FROM Donativos WHERE Eliminado=0 "
        u"AND CodEmisor_Cuenta IN (SELECT IDEmisor_Cuenta FROM Emisores_Cuentas WHERE CodEmisor IN "
        u"({0}))) OR Colaboradores.IDColaborador IN (SELECT CodColaborador FROM Suscripciones WHERE "
        u"Eliminado=0 AND CodEmisor_Cuenta IN (SELECT IDEmisor_Cuenta FROM Emisores_Cuentas WHERE "
        u"CodEmisor IN ({0}))))",
        keys);
  });
  add(Condition::Community, [](const Verbatim& keys) {
    return StatementText(
        u" AND Colaboradores.CodProvincia IN (SELECT codProvincia FROM ProvinciasComunidades WHERE "
        u"CodComunidad IN ({}))",
        keys);
  });
  for (const auto& [condition, column] : {std::pair(Condition::Diocese, u"CodDiocesis"_s),
                                          {Condition::Province, u"CodProvincia"_s},
                                          {Condition::Country, u"codpais"_s},
                                          {Condition::Collector, u"CodCobrador"_s},
                                          {Condition::Heading, u"CodEncabezado"_s}}) {
    add(condition, [&column = column](const Verbatim& keys) {
      return StatementText(u" AND Colaboradores.{} IN ({})", Verbatim{column}, keys);
    });
  }
  return clause;
}

ConditionRecords RecordsOf(Condition condition) {
  const Row& row = rows[static_cast<std::size_t>(condition)];
  return {QString::fromUtf16(row.table), QString::fromUtf16(row.key), QString::fromUtf16(row.title)};
}

}  // namespace host
