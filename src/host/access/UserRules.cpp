#include "host/access/UserRules.h"

#include "host/access/ServerPeople.h"
#include "host/records/ChangeLog.h"
#include "host/records/ChangeNote.h"
#include "host/records/OfficeConnection.h"
#include "host/records/OpenConnection.h"
#include "host/records/ProcessIdentity.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::Execute;

namespace host {

namespace {

constexpr qsizetype longestName = 50;
constexpr qsizetype longestFullName = 100;
constexpr int administratorKind = 1;
constexpr int usualKind = 2;

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

bool IsPlain(const QString& text, qsizetype longest) {
  return text.size() <= longest &&
         std::ranges::none_of(text, [](QChar c) { return c.category() == QChar::Other_Control; });
}

QString YesNo(bool value) {
  return value ? u"Sí"_s : u"No"_s;
}

}  // namespace

/// One change: a transaction that nobody else writes in, by an administrator.
class UserRules::Step {
 public:
  enum class Who { Administrator, Anybody };

  explicit Step(Session& session, Who who = Who::Administrator)
      : m_session(session), m_connection(Opened(session.connection)), m_transaction(m_connection) {
    if (who == Who::Administrator && session.userId != 0 && !IsByAdministrator()) {
      Refuse(u"Usted ya no administra los usuarios. Pregunte a otro administrador."_s);
    }
  }

  adodb::Connection& Connection() { return m_connection; }

  Account Require(int id) {
    const std::optional<Account> account = ReadAccount(m_connection, id);
    if (!account) {
      Refuse(u"Otra persona ha eliminado ese usuario."_s);
    }
    return *account;
  }

  UserData Checked(UserData data, int id) {
    data.name = data.name.trimmed();
    data.fullName = data.fullName.trimmed();
    if (data.name.isEmpty() || !IsPlain(data.name, longestName)) {
      Refuse(u"Escriba un nombre de usuario de hasta %1 letras."_s.arg(longestName));
    }
    if (!IsPlain(data.fullName, longestFullName)) {
      Refuse(u"Escriba un nombre completo de hasta %1 letras, en una línea."_s.arg(longestFullName));
    }
    const auto same =
        Execute(m_connection, u"SELECT IDUsuario FROM Usuarios WHERE Eliminado=0 AND Nombre='{}' AND IDUsuario<>{}",
                data.name, id);
    if (!same->AtEnd()) {
      Refuse(u"Ya hay un usuario con el nombre «%1». Elija otro."_s.arg(data.name));
    }
    return data;
  }

  /// The user's row of Claves, made where there is none.
  void RequireRow(const Account& account) {
    if (Execute(m_connection, u"SELECT IDClave FROM Claves WHERE codUsuario={}", account.id)->AtEnd()) {
      Execute(m_connection, u"INSERT INTO Claves (codUsuario, Derechos) VALUES ({}, {})", account.id,
              static_cast<int>(account.rights));
    }
  }

  void SetPassword(const Account& account, const QString& hash, bool mustChange) {
    RequireRow(account);
    Execute(m_connection,
            u"UPDATE Claves SET Hash='{}', Desde='{}', DebeCambiar={}, Fallos=0, EsperaHasta='' WHERE codUsuario={}",
            hash, QDateTime::currentDateTimeUtc().toString(Qt::ISODate), mustChange, account.id);
    Note(account, {u"Contraseña"_s, {}, u"nueva"_s});
  }

  /// What the change log does not see by itself.
  void Note(const Account& account, const ColumnChange& column) {
    const host::Change change{.moment = QDateTime::currentDateTimeUtc(),
                              .userId = m_session.userId,
                              .userName = m_session.userName,
                              .machine = CurrentProcess().machine,
                              .program = m_session.office != nullptr ? m_session.office->Program() : QString(),
                              .table = u"Usuarios"_s,
                              .key = account.id,
                              .name = account.name,
                              .columns = {column}};
    m_connection.Execute(NoteStatement(change));
  }

  void Commit() { m_transaction.Commit(); }

 private:
  bool IsByAdministrator() {
    if (const std::optional<database::ServerRole> role = database::OwnRole(m_connection)) {
      return RightsOf(*role) == Rights::Administrator;
    }
    const std::optional<Account> actor = ReadAccount(m_connection, m_session.userId);
    return actor && actor->IsAdministrator() && !actor->isOff;
  }

  Session& m_session;
  adodb::Connection& m_connection;
  adodb::Transaction m_transaction;
};

int UserRules::Add(const UserData& wanted) {
  Step step(m_session);
  const UserData data = step.Checked(wanted, 0);
  const bool administers = data.rights == Rights::Administrator;
  Execute(step.Connection(),
          u"INSERT INTO Usuarios (Nombre, NombreCompleto, Administrador, TipoUsuario) VALUES ('{}', '{}', {}, {})",
          data.name, data.fullName, administers, administers ? administratorKind : usualKind);
  const auto newest = Execute(step.Connection(), u"SELECT MAX(IDUsuario) AS Maximo FROM Usuarios");
  const Account account{
      .id = automation::CLng(newest->Field(0)), .name = data.name, .fullName = data.fullName, .rights = data.rights};
  step.RequireRow(account);
  step.Commit();
  return account.id;
}

void UserRules::Change(int id, const UserData& wanted) {
  Step step(m_session);
  const Account before = step.Require(id);
  const UserData data = step.Checked(wanted, id);
  if (id == m_session.userId && data.rights != before.rights) {
    Refuse(u"Nadie cambia sus propios derechos. Pídaselo a otro administrador."_s);
  }
  const bool administers = data.rights == Rights::Administrator;
  Execute(step.Connection(),
          u"UPDATE Usuarios SET Nombre='{}', NombreCompleto='{}', Administrador={}, TipoUsuario={} WHERE IDUsuario={}",
          data.name, data.fullName, administers, administers ? administratorKind : usualKind, id);
  if (data.rights != before.rights) {
    step.RequireRow(before);
    Execute(step.Connection(), u"UPDATE Claves SET Derechos={} WHERE codUsuario={}", static_cast<int>(data.rights), id);
    step.Note(before, {u"Derechos"_s, RightsText(before.rights), RightsText(data.rights)});
  }
  step.Commit();
}

void UserRules::SetPassword(int id, const QString& hash) {
  Step step(m_session);
  step.SetPassword(step.Require(id), hash, id != m_session.userId);
  step.Commit();
}

void UserRules::SwitchOff(int id, bool isOff) {
  Step step(m_session);
  const Account account = step.Require(id);
  if (id == m_session.userId) {
    Refuse(u"Nadie se desactiva a sí mismo. Pídaselo a otro administrador."_s);
  }
  step.RequireRow(account);
  Execute(step.Connection(), u"UPDATE Claves SET Desactivado={} WHERE codUsuario={}", isOff, id);
  step.Note(account, {u"Desactivado"_s, YesNo(account.isOff), YesNo(isOff)});
  step.Commit();
}

void UserRules::TurnOn(const QString& name, const QString& hash) {
  Step step(m_session);
  Account own = step.Require(m_session.userId);
  own.name = step.Checked({name, own.fullName, own.rights}, own.id).name;
  Execute(step.Connection(), u"UPDATE Usuarios SET Nombre='{}' WHERE IDUsuario={}", own.name, own.id);
  step.SetPassword(own, hash, false);
  AskForPasswords(step.Connection(), true);
  step.Note(own, {u"Pedir contraseña al empezar"_s, YesNo(false), YesNo(true)});
  step.Commit();
}

void UserRules::TurnOff() {
  Step step(m_session);
  AskForPasswords(step.Connection(), false);
  step.Note(step.Require(m_session.userId), {u"Pedir contraseña al empezar"_s, YesNo(true), YesNo(false)});
  step.Commit();
}

void UserRules::LockAfter(int minutes) {
  Step step(m_session);
  SetIdleMinutes(step.Connection(), minutes);
  step.Commit();
}

void UserRules::ChangeForAll(const OfficePolicy& before, const OfficePolicy& wanted) {
  Step step(m_session);
  if (!IsPlain(wanted.name, longestFullName)) {
    Refuse(u"Escriba un nombre de la entidad de hasta %1 letras, en una línea."_s.arg(longestFullName));
  }
  if (ReadOfficePolicy(step.Connection()) != before) {
    Refuse(u"Otra persona ha cambiado estos ajustes mientras tanto. Cierre el cuadro y ábralo otra vez."_s);
  }
  StoreOfficePolicy(step.Connection(), before, wanted);
  step.Commit();
}

void UserRules::ChangeOwnPassword(const QString& hash) {
  Step step(m_session, Step::Who::Anybody);
  step.SetPassword(step.Require(m_session.userId), hash, false);
  step.Commit();
}

void UserRules::Rehash(int id, const QString& hash) {
  Execute(Opened(m_session.connection), u"UPDATE Claves SET Hash='{}' WHERE codUsuario={}", hash, id);
}

}  // namespace host
