#include "host/cli/UserCommand.h"

#include "database/Database.h"
#include "host/access/Passwords.h"
#include "host/access/UserRules.h"
#include "host/cli/PrintedTable.h"
#include "host/cli/Startup.h"
#include "host/desktop/PasswordBox.h"
#include "host/records/MomentText.h"
#include "host/records/OfficeSettings.h"
#include "platform/automation/Error.h"

#include <QTextStream>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

QString Moment(const QDateTime& moment) {
  return moment.isValid() ? DayAndTime(moment) : u"-"_s;
}

QString StateOf(const Account& account) {
  if (account.isOff) {
    return u"desactivado"_s;
  }
  if (account.hash.isEmpty()) {
    return u"sin contraseña"_s;
  }
  return account.mustChange ? u"contraseña por elegir"_s : u"con contraseña"_s;
}

void List(adodb::Connection& connection) {
  QList<QStringList> table{{u"Usuario"_s, u"Nombre completo"_s, u"Derechos"_s, u"Última entrada"_s, u"Estado"_s}};
  const QList<Account> accounts = ReadAccounts(connection);
  for (const Account& account : accounts) {
    table.append(
        {account.name, account.fullName, RightsText(account.rights), Moment(account.lastEntry), StateOf(account)});
  }
  PrintTable(table);
  QTextStream(stdout) << (AsksForPasswords(connection) ? u"Se piden usuario y contraseña al empezar.\n"_s
                                                       : u"No se pide contraseña al empezar.\n"_s);
}

// From a program it comes as one line.
QString ReadPassword(const Account& account) {
  if (isatty(STDIN_FILENO) == 0) {
    return QTextStream(stdin).readLine(longestPassword + 1);
  }
  const std::optional<QString> first = ReadUnseen(u"Contraseña nueva de «%1»:"_s.arg(account.name));
  const std::optional<QString> second = ReadUnseen(u"Repítala:"_s);
  if (!first || first != second) {
    Refuse(u"Las dos no son iguales. No se ha cambiado nada."_s);
  }
  return *first;
}

void GivePassword(Session& session, const Account& account) {
  const QString password = ReadPassword(account);
  const QString fault = PasswordFault(password, {account.name, account.fullName, OfficeName(*session.connection)});
  if (!fault.isEmpty()) {
    Refuse(fault);
  }
  UserRules(session).SetPassword(account.id, HashOf(password));
  QTextStream(stdout) << u"Contraseña nueva de «%1». Al entrar tendrá que elegir otra.\n"_s.arg(account.name);
}

void MakeAdministrator(Session& session, const Account& account) {
  UserRules rules(session);
  rules.Change(account.id, {account.name, account.fullName, Rights::Administrator});
  if (account.isOff) {
    rules.SwitchOff(account.id, false);
  }
  QTextStream(stdout) << u"«%1» administra la base de datos.\n"_s.arg(account.name);
}

}  // namespace

void RunUserCommand(const CommandLine& line) {
  const Target target = TargetOf(line);
  RequireWanted(target, line);
  if (!target.place.IsFile()) {
    Refuse(u"En un servidor cada persona tiene su usuario de PostgreSQL; el programa no guarda contraseñas."_s);
  }
  Session session;
  OfficeConnection office(database::CreateConnection(target.connectionString), session);
  office.Open();
  session.connection = &office;
  session.office = &office;
  session.userName = u"el dueño del archivo"_s;
  if (line.userAct == UserAct::List) {
    List(office);
    return;
  }
  if (!OwnsFile(target.place)) {
    Refuse(u"Solo el dueño del archivo «%1» puede hacerlo."_s.arg(target.place.file));
  }
  const std::optional<Account> account = FindAccount(office, line.userName);
  if (!account) {
    Refuse(u"No hay ningún usuario con el nombre «%1»."_s.arg(line.userName));
  }
  if (line.userAct == UserAct::NewPassword) {
    GivePassword(session, *account);
  } else {
    MakeAdministrator(session, *account);
  }
}

}  // namespace host
