#pragma once

#include "host/access/Accounts.h"
#include "host/access/Beside.h"
#include "host/access/Door.h"
#include "host/records/Session.h"

#include <QObject>
#include <QString>

namespace host {

/// Tries names and passwords, one after the other, beside the window: a wrong name takes as long as a wrong password,
/// and is told in the same words.
class Entry : public QObject {
  Q_OBJECT

 public:
  /// Borrows both for its life.
  Entry(Session& session, Door& door, QObject* parent = nullptr);

  /// One of the signals answers, later or at once. Nothing happens while a try is under way.
  void Try(const QString& name, const QString& password);
  /// The same for who has entered before. That user still gets in where the database can't be read any more, and where
  /// it does not have the user any more, by the password of then.
  void TryAgain(const Account& known, const QString& password);
  bool IsBusy() const { return m_beside.IsBusy(); }

 Q_SIGNALS:
  void Entered(const host::Account& account);
  /// Why not, and what to do.
  void Refused(const QString& text);

 private:
  void Begin(const QString& name, const Account* known);
  void Check(const QString& password, const std::optional<Account>& known);
  void Finish(bool isRight, const QString& newHash, const std::optional<Account>& known);
  void Refuse(const QString& text);

  Session& m_session;
  Door& m_door;
  Door::Try m_try;
  bool m_isAlone = false;  ///< Without the database.
  Beside m_beside;
};

}  // namespace host
