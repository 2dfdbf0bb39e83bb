#include "host/records/OfficeSettings.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

namespace host {

namespace {

constexpr qsizetype longestOfficeName = 100;

}  // namespace

QString OfficeSetting(adodb::Connection& connection, const QString& name, const QString& otherwise) {
  const auto rows = adodb::Execute(connection, u"SELECT Valor FROM Ajustes WHERE Nombre='{}'", name);
  return rows->AtEnd() ? otherwise : automation::Text(rows->Field(0));
}

void SetOfficeSetting(adodb::Connection& connection, const QString& name, const QString& value) {
  adodb::Execute(connection, u"UPDATE Ajustes SET Valor='{}' WHERE Nombre='{}'", value, name);
  if (connection.RecordsAffected() == 0) {
    adodb::Execute(connection, u"INSERT INTO Ajustes (Nombre, Valor) VALUES ('{}', '{}')", name, value);
  }
}

QString OfficeName(adodb::Connection& connection) {
  const auto rows = adodb::Execute(connection, u"SELECT NombreEntidad FROM configuracion");
  return rows->AtEnd() ? QString() : automation::Text(rows->Field(0)).left(longestOfficeName);
}

}  // namespace host
