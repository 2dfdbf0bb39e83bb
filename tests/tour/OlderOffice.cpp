#include "tour/OlderOffice.h"

#include "moving/TableRules.h"
#include "moving/ZipPacking.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "support/DesktopFile.h"

#include <QBuffer>

using adodb::Verbatim;
using support::DesktopFile;
using namespace Qt::StringLiterals;

namespace tour {

namespace {

using database::ColumnType;

// Keys there are others than here, and so are the references to them.
constexpr int shift = 5000;

DesktopFile::Type TypeOf(const database::Column& column) {
  switch (column.type) {
    case ColumnType::Text:
      return DesktopFile::Text;
    case ColumnType::LongText:
      return DesktopFile::Memo;
    case ColumnType::Boolean:
      return DesktopFile::Bool;
    case ColumnType::Decimal:
      return DesktopFile::Double;
    case ColumnType::Money:
      return DesktopFile::Money;
    default:
      return DesktopFile::Long;
  }
}

QVariant Stored(const database::Column& column, const QVariant& value) {
  if (automation::IsNull(value)) {
    return {};
  }
  switch (column.type) {
    case ColumnType::Text:
    case ColumnType::LongText:
      return value.toString();
    case ColumnType::Boolean:
      return value.toBool();
    case ColumnType::Decimal:
      return value.toDouble();
    case ColumnType::Money:
      return automation::CCur(value).Scaled();
    default:
      break;
  }
  const bool isKey = column.type == ColumnType::Key || database::Schema::Current().ReferredTable(column) != nullptr;
  const int number = value.toInt();
  return isKey && number != 0 ? number + shift : number;
}

QString NameThere(const QString& table) {
  return table == u"Bancos" ? u"BANCOS"_s : table == u"Provincias" ? u"tblProvincia"_s : table;
}

QString First(adodb::Connection& office, const QString& statement) {
  return automation::Text(office.Execute(statement)->Field(0));
}

}  // namespace

QByteArray OlderOffice(adodb::Connection& office) {
  DesktopFile file;
  for (const moving::TableRule& rule : moving::TableRules()) {
    QList<DesktopFile::Column> columns;
    for (const database::Column& column : rule.table->columns) {
      columns.append({column.name, TypeOf(column)});
    }
    file.AddTable(NameThere(rule.table->name), columns);
    const auto rows = adodb::Execute(office, u"SELECT * FROM [{}]", Verbatim{rule.table->name});
    for (; !rows->AtEnd(); rows->MoveNext()) {
      DesktopFile::Row row;
      for (const database::Column& column : rule.table->columns) {
        row.append(Stored(column, rows->Field(column.name)));
      }
      file.AddRow(row);
    }
  }
  file.AddTable(u"BloqueoRegistros"_s, {{u"IDBloqueoRegistro"_s, DesktopFile::Long}});
  file.AddRow({1});
  file.AddLinkedTable(u"Archivo antiguo"_s);
  return file.Bytes();
}

QByteArray BankList(adodb::Connection& office) {
  const QString number = First(office, u"SELECT MIN(Numero) FROM Bancos WHERE Eliminado=0"_s);
  const QString sheet =
      u"<worksheet><sheetData><row><c t=\"inlineStr\"><is><t>Número</t></is></c><c t=\"inlineStr\">"
      "<is><t>Nombre</t></is></c></row><row><c><v>%1</v></c><c t=\"inlineStr\"><is><t>Banco de la "
      "Lista</t></is></c></row><row><c><v>9321</v></c><c t=\"inlineStr\"><is><t>Banco Recién "
      "Abierto</t></is></c></row></sheetData></worksheet>"_s.arg(number.toInt());
  QBuffer buffer;
  buffer.open(QIODevice::ReadWrite);
  moving::Pack({{"xl/workbook.xml",
                 "<workbook xmlns:r=\"u:r\"><sheets><sheet name=\"Bancos\" r:id=\"a\"/></sheets>"
                 "</workbook>"},
                {"xl/_rels/workbook.xml.rels", "<R><R Id=\"a\" Target=\"worksheets/s1.xml\"/></R>"},
                {"xl/worksheets/s1.xml", sheet.toUtf8()}},
               buffer);
  return buffer.data();
}

QByteArray MemberList(adodb::Connection& office) {
  const QString number =
      First(office, u"SELECT MIN(NIF) FROM Colaboradores WHERE Eliminado=0 AND NIF LIKE '_________'"_s);
  return u"Nombre;Apellido1;NIF;Direccion;Poblacion;CP\nMaría;Nueva;;Calle Mayor, 1;Aldea Real;40390\n;;%1;Calle de la "
         "Mudanza, 2;;\n"_s.arg(number)
             .toUtf8();
}

}  // namespace tour
