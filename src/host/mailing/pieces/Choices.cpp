#include "host/mailing/pieces/Choices.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::Verbatim;

namespace host {

namespace {

/// Headings are known by the kind of people whom they greet, collectors by their whole names.
QString NameColumns(Condition condition) {
  switch (condition) {
    case Condition::Heading:
      return u"Descripcion"_s;
    case Condition::Collector:
      return u"Nombre, Apellido1, Apellido2"_s;
    default:
      return u"Nombre"_s;
  }
}

QList<Choice> Records(adodb::Connection& connection, const QString& table, const QString& key, const QString& names,
                      bool marksDeleted = true) {
  const auto rows =
      adodb::Execute(connection, u"SELECT {0}, {1} FROM {2}{3} ORDER BY {1}, {0}", Verbatim{key}, Verbatim{names},
                     Verbatim{table}, Verbatim{marksDeleted ? u" WHERE Eliminado=0"_s : QString()});
  QList<Choice> records;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    QStringList name;
    for (int column = 1; column < rows->FieldCount(); ++column) {
      name.append(automation::Text(rows->Field(column)));
    }
    records.append({automation::CLng(rows->Field(0)), name.join(u' ').simplified()});
  }
  return records;
}

QList<SheetChoice> Sheets(adodb::Connection& connection) {
  const auto rows =
      adodb::Execute(connection, u"SELECT * FROM ETIQUETAS WHERE Eliminado=0 AND ENVIOPOSTAL=True ORDER BY NOMBRE");
  QList<SheetChoice> sheets;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    SheetChoice sheet;
    sheet.id = automation::CLng(rows->Field(u"IDETIQUETA"));
    sheet.name = automation::Text(rows->Field(u"NOMBRE"));
    sheet.sheet = documents::ReadSheet(*rows);
    sheet.lastLabel = automation::CLng(rows->Field(u"NULTIMAETIQUETA"));
    sheets.append(sheet);
  }
  for (SheetChoice& sheet : sheets) {
    sheet.font = ReadLabelFont(connection, sheet.id);
  }
  return sheets;
}

}  // namespace

Choices ReadChoices(adodb::Connection& connection, int userId) {
  Choices choices;
  choices.selections = ListSelections(connection, userId);
  choices.letters = Records(connection, u"CartasModelo"_s, u"IDCartaModelo"_s, u"Nombre"_s);
  choices.sheets = Sheets(connection);
  for (std::size_t i = 0; i < conditionCount; ++i) {
    const auto condition = Condition(i);
    const ConditionRecords records = RecordsOf(condition);
    choices.records[i] =
        Records(connection, records.table, records.key, NameColumns(condition), condition != Condition::Heading);
  }
  return choices;
}

documents::LabelFont ReadLabelFont(adodb::Connection& connection, int sheet) {
  documents::LabelFont font{.family = u"Liberation Sans"_s};
  const auto row =
      adodb::Execute(connection, u"SELECT Fuente, Puntos, Margen FROM EtiquetasImpresion WHERE codEtiqueta={}", sheet);
  if (!row->AtEnd()) {
    constexpr double smallest = 4;
    constexpr double largest = 72;
    font.family = automation::Text(row->Field(0));
    font.points = std::clamp(automation::CDbl(row->Field(1)), smallest, largest);
    font.left = std::max(0.0, automation::CDbl(row->Field(2)));
  }
  return font;
}

void WriteLabelFont(adodb::Connection& connection, int sheet, const documents::LabelFont& font) {
  const Verbatim points{QString::number(font.points)};
  const Verbatim left{QString::number(font.left)};
  adodb::Transaction transaction(connection);
  adodb::Execute(connection,
                 u"UPDATE EtiquetasImpresion SET Fuente='{}', Puntos='{}', Margen='{}' WHERE codEtiqueta={}",
                 font.family, points, left, sheet);
  if (connection.RecordsAffected() == 0) {
    adodb::Execute(connection,
                   u"INSERT INTO EtiquetasImpresion (codEtiqueta, Fuente, Puntos, Margen) VALUES ({}, '{}', '{}', "
                   u"'{}')",
                   sheet, font.family, points, left);
  }
  transaction.Commit();
}

}  // namespace host
