#include "host/access/Entry.h"

#include "host/access/Passwords.h"
#include "host/access/UserRules.h"
#include "host/records/OpenConnection.h"
#include "platform/automation/Error.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString WaitText(std::chrono::seconds wait) {
  if (wait.count() == 0) {
    return {};
  }
  return wait.count() == 1 ? u" Puede volver a probar dentro de 1 segundo."_s
                           : u" Puede volver a probar dentro de %1 segundos."_s.arg(wait.count());
}

}  // namespace

Entry::Entry(Session& session, Door& door, QObject* parent)
    : QObject(parent), m_session(session), m_door(door), m_beside(this) {}

void Entry::Try(const QString& name, const QString& password) {
  if (IsBusy()) {
    return;
  }
  try {
    Begin(name, nullptr);
  } catch (const automation::Error& error) {
    Q_EMIT Refused(error.Description());
    return;
  }
  Check(password, std::nullopt);
}

void Entry::TryAgain(const Account& known, const QString& password) {
  if (IsBusy()) {
    return;
  }
  Begin(known.name, &known);
  Check(password, known);
}

void Entry::Begin(const QString& name, const Account* known) {
  m_isAlone = false;
  try {
    m_try = m_door.Begin(Opened(m_session.connection), name);
  } catch (const automation::Error&) {
    if (known == nullptr) {
      throw;
    }
    m_isAlone = true;
    m_try = m_door.BeginAlone(name);
  }
  if (known != nullptr && m_try.userId != known->id) {
    m_isAlone = true;
    m_try.hash = known->hash;
  }
}

void Entry::Check(const QString& password, const std::optional<Account>& known) {
  if (m_try.wait.count() > 0) {
    Refuse(u"Todavía no se puede probar otra vez."_s);
    return;
  }
  struct Outcome {
    PasswordVerdict verdict = PasswordVerdict::Wrong;
    QString newHash;
  };
  auto outcome = std::make_shared<Outcome>();
  m_beside.Run(
      [outcome, password, hash = m_try.hash] {
        if (hash.isEmpty()) {
          PretendToCheck(password);
          return;
        }
        outcome->verdict = CheckPassword(password, hash);
        if (outcome->verdict == PasswordVerdict::Right && IsOutdated(hash)) {
          outcome->newHash = HashOf(password);
        }
      },
      [this, outcome, known](const std::optional<automation::Error>& error) {
        if (error) {
          Q_EMIT Refused(error->Description());
        } else if (outcome->verdict == PasswordVerdict::Unusable) {
          Q_EMIT Refused(
              u"La contraseña guardada de este usuario está dañada. Un administrador tiene que darle otra."_s);
        } else {
          Finish(outcome->verdict == PasswordVerdict::Right, outcome->newHash, known);
        }
      });
}

void Entry::Finish(bool isRight, const QString& newHash, const std::optional<Account>& known) {
  if (!isRight) {
    Refuse(u"El usuario o la contraseña no es correcta."_s);
    return;
  }
  if (m_isAlone) {
    m_door.SucceedAlone(m_try.name);
    Q_EMIT Entered(*known);
    return;
  }
  std::optional<Account> account;
  try {
    adodb::Connection& connection = Opened(m_session.connection);
    m_door.Succeed(connection, m_try);
    if (!newHash.isEmpty() && !m_session.readOnly) {
      UserRules(m_session).Rehash(m_try.userId, newHash);
    }
    account = ReadAccount(connection, m_try.userId);
  } catch (const automation::Error& error) {
    Q_EMIT Refused(error.Description());
    return;
  }
  if (!account) {
    Refuse(u"El usuario o la contraseña no es correcta."_s);
    return;
  }
  Q_EMIT Entered(*account);
}

void Entry::Refuse(const QString& text) {
  std::chrono::seconds wait = m_try.wait;
  try {
    if (wait.count() == 0 && !m_isAlone) {
      wait = m_door.Wait(Opened(m_session.connection), m_try.name);
    }
  } catch (const automation::Error&) {
    wait = {};
  }
  Q_EMIT Refused(text + WaitText(wait));
}

}  // namespace host
