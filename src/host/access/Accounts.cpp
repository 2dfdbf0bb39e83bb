#include "host/access/Accounts.h"

#include "host/records/OfficeSettings.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::Execute;
using automation::CBool;
using automation::CLng;
using automation::Text;

namespace host {

namespace {

constexpr qsizetype longestName = 50;
constexpr qsizetype longestFullName = 100;

const QString asksSetting = u"PedirClave"_s;
const QString idleSetting = u"BloqueoMinutos"_s;

const adodb::Verbatim accountColumns{
    u"Usuarios.IDUsuario, Usuarios.Nombre, Usuarios.NombreCompleto, Usuarios.Administrador, Claves.IDClave, "
    "Claves.Hash, Claves.Desde, Claves.DebeCambiar, Claves.Derechos, Claves.UltimaEntrada, Claves.Desactivado "
    "FROM Usuarios LEFT JOIN Claves ON Usuarios.IDUsuario=Claves.codUsuario WHERE Usuarios.Eliminado=0"_s};

bool IsTrue(const QVariant& value) {
  return !automation::IsNull(value) && CBool(value);
}

Rights RightsOf(adodb::Recordset& row) {
  if (IsTrue(row.Field(u"Administrador"))) {
    return Rights::Administrator;
  }
  if (automation::IsNull(row.Field(u"IDClave"))) {
    return Rights::ChangesAndDeletes;
  }
  const int stored = CLng(row.Field(u"Derechos"));
  return stored == int(Rights::Changes) || stored == int(Rights::ChangesAndDeletes) ? static_cast<Rights>(stored)
                                                                                    : Rights::Viewer;
}

QDateTime Moment(const QVariant& value) {
  return QDateTime::fromString(Text(value), Qt::ISODate);
}

Account AccountFrom(adodb::Recordset& row) {
  Account account;
  account.id = CLng(row.Field(u"IDUsuario"));
  account.name = Text(row.Field(u"Nombre")).left(longestName);
  account.fullName = Text(row.Field(u"NombreCompleto")).left(longestFullName);
  account.rights = RightsOf(row);
  account.isOff = IsTrue(row.Field(u"Desactivado"));
  account.mustChange = IsTrue(row.Field(u"DebeCambiar"));
  account.hash = Text(row.Field(u"Hash"));
  account.passwordSince = Moment(row.Field(u"Desde"));
  account.lastEntry = Moment(row.Field(u"UltimaEntrada"));
  return account;
}

std::optional<Account> FirstOf(adodb::Recordset& rows) {
  return rows.AtEnd() ? std::nullopt : std::optional(AccountFrom(rows));
}

}  // namespace

QList<Account> ReadAccounts(adodb::Connection& connection) {
  QList<Account> accounts;
  const auto rows = Execute(connection, u"SELECT {} ORDER BY Usuarios.Nombre, Usuarios.IDUsuario", accountColumns);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    accounts.append(AccountFrom(*rows));
  }
  return accounts;
}

std::optional<Account> ReadAccount(adodb::Connection& connection, int id) {
  return FirstOf(*Execute(connection, u"SELECT {} AND Usuarios.IDUsuario={}", accountColumns, id));
}

std::optional<Account> FindAccount(adodb::Connection& connection, const QString& name) {
  return FirstOf(*Execute(connection, u"SELECT {} AND Usuarios.Nombre='{}' ORDER BY Usuarios.IDUsuario", accountColumns,
                          name.trimmed()));
}

bool AsksForPasswords(adodb::Connection& connection) {
  return OfficeSetting(connection, asksSetting) == "1"_L1;
}

void AskForPasswords(adodb::Connection& connection, bool wanted) {
  SetOfficeSetting(connection, asksSetting, wanted ? u"1"_s : u"0"_s);
}

int IdleMinutes(adodb::Connection& connection) {
  bool isNumber = false;
  const int minutes = OfficeSetting(connection, idleSetting).toInt(&isNumber);
  return isNumber ? std::clamp(minutes, 0, mostIdleMinutes) : usualIdleMinutes;
}

void SetIdleMinutes(adodb::Connection& connection, int minutes) {
  SetOfficeSetting(connection, idleSetting, QString::number(minutes));
}

}  // namespace host
