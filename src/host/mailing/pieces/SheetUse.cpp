#include "host/mailing/pieces/SheetUse.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr double smallestPoints = 4;
constexpr double largestPoints = 72;

QString Decimal(double value) {
  return QString::number(value).replace(u'.', u',');
}

}  // namespace

documents::LabelFont ReadLabelFont(adodb::Connection& connection, int sheet) {
  documents::LabelFont font{.family = u"Liberation Sans"_s};
  const auto row =
      adodb::Execute(connection, u"SELECT Fuente, Puntos, Margen FROM EtiquetasImpresion WHERE codEtiqueta={}", sheet);
  if (!row->AtEnd()) {
    font.family = automation::Text(row->Field(0));
    font.points = std::clamp(automation::CDbl(row->Field(1)), smallestPoints, largestPoints);
    font.left = std::max(0.0, automation::CDbl(row->Field(2)));
  }
  return font;
}

void SaveLabelFont(adodb::Connection& connection, int sheet, const documents::LabelFont& font) {
  adodb::Transaction transaction(connection);
  adodb::Execute(connection, u"DELETE FROM EtiquetasImpresion WHERE codEtiqueta={}", sheet);
  adodb::Execute(connection,
                 u"INSERT INTO EtiquetasImpresion (codEtiqueta, Fuente, Puntos, Margen) VALUES ({}, '{}', '{}', '{}')",
                 sheet, font.family, Decimal(font.points), Decimal(font.left));
  transaction.Commit();
}

int StartBehindLast(adodb::Connection& connection, int sheet) {
  const auto row = adodb::Execute(
      connection, u"SELECT NULTIMAETIQUETA, NETIQUETASTOTAL FROM ETIQUETAS WHERE Eliminado=0 AND IDETIQUETA={}", sheet);
  if (row->AtEnd()) {
    return 1;
  }
  const int last = automation::IsNull(row->Field(0)) ? 0 : automation::CLng(row->Field(0));
  return last > 0 && last < automation::CLng(row->Field(1)) ? last + 1 : 1;
}

bool RememberLastLabel(adodb::Connection& connection, int sheet, int label) {
  adodb::Transaction transaction(connection);
  adodb::Execute(connection,
                 u"UPDATE ETIQUETAS SET NULTIMAETIQUETA={0}, ULTIMOUTILIZADO=1 WHERE IDETIQUETA={1} AND Eliminado=0 "
                 u"AND NETIQUETASTOTAL>={0}",
                 label, sheet);
  if (connection.RecordsAffected() == 0) {
    return false;
  }
  adodb::Execute(connection, u"UPDATE ETIQUETAS SET ULTIMOUTILIZADO=0 WHERE ULTIMOUTILIZADO=1 AND IDETIQUETA<>{}",
                 sheet);
  transaction.Commit();
  return true;
}

int LastUsedSheet(adodb::Connection& connection) {
  const auto row =
      adodb::Execute(connection, u"SELECT IDETIQUETA FROM ETIQUETAS WHERE Eliminado=0 AND ULTIMOUTILIZADO=1");
  return row->AtEnd() ? 0 : automation::CLng(row->Field(0));
}

}  // namespace host
