#include "host/mailing/pieces/Choices.h"

#include "host/mailing/pieces/SheetUse.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

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
  const auto rows = adodb::Execute(connection, u"SELECT * FROM ETIQUETAS WHERE Eliminado=0 ORDER BY NOMBRE");
  QList<SheetChoice> sheets;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    SheetChoice sheet;
    sheet.id = automation::CLng(rows->Field(u"IDETIQUETA"));
    sheet.name = automation::Text(rows->Field(u"NOMBRE"));
    sheet.sheet = documents::ReadSheet(*rows);
    sheet.isForDisks = automation::CBool(rows->Field(u"DISCO"));
    sheets.append(sheet);
  }
  for (SheetChoice& sheet : sheets) {
    sheet.start = StartBehindLast(connection, sheet.id);
    sheet.font = ReadLabelFont(connection, sheet.id);
  }
  return sheets;
}

}  // namespace

Choices ReadChoices(adodb::Connection& connection, int userId) {
  Choices choices;
  choices.selections = ListSelections(connection, userId);
  choices.letters = Records(connection, u"CartasModelo"_s, u"IDCartaModelo"_s, u"Nombre"_s);
  choices.letterheads = Records(connection, u"Cabeceras"_s, u"IDCabecera"_s, u"Nombre"_s);
  choices.sheets = Sheets(connection);
  choices.lastSheet = LastUsedSheet(connection);
  for (std::size_t i = 0; i < conditionCount; ++i) {
    const auto condition = Condition(i);
    const ConditionRecords records = RecordsOf(condition);
    choices.records[i] =
        Records(connection, records.table, records.key, NameColumns(condition), condition != Condition::Heading);
  }
  return choices;
}

}  // namespace host
