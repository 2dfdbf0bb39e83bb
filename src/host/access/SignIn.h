#pragma once

#include "host/access/Entry.h"

#include <QDialog>
#include <QString>

class QComboBox;
class QPushButton;

namespace host {

class AlertLabel;
class PasswordLine;

/// Asks who works, and for the password. Accepted when somebody may enter.
class SignIn : public QDialog {
  Q_OBJECT

 public:
  /// Borrows both; `place` is the database as the user knows it, `name` whom to propose besides those who have entered
  /// here before.
  SignIn(Session& session, Door& door, const QString& place, const QString& name, QWidget* parent = nullptr);

  /// Whoever entered; known after exec() was accepted.
  const Account& Entered() const { return m_account; }

 private:
  void Build(const QString& place);
  void TryToEnter();
  void SetBusy(bool isBusy);

  Session& m_session;
  Entry m_entry;
  Account m_account;
  QComboBox* m_name;
  PasswordLine* m_password;
  AlertLabel* m_alert;
  QPushButton* m_enter;
};

/// Signs a user in at the start of a session, who has to choose another password where that is due. False when the user
/// gives up; the session is unchanged then. Errors of the database leave it.
bool AskWhoWorks(Session& session, Door& door, const QString& place, const QString& name, Account& account);

}  // namespace host
