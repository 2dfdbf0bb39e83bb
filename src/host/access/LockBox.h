#pragma once

#include "host/access/Entry.h"

#include <QDialog>

class QLabel;
class QPushButton;

namespace host {

class AlertLabel;
class PasswordLine;

/// What stands above a locked program: the user's name, and a box for the password. Neither Escape nor its close box
/// take it away; only who ends the program does.
class LockBox : public QDialog {
  Q_OBJECT

 public:
  /// Borrows both; `place` is the database as the user knows it.
  LockBox(Session& session, Door& door, const Account& account, QString place);

  /// It is told to go by who ends the program.
  void reject() override;

 Q_SIGNALS:
  void Unlocked();
  /// An administrator wants the program for somebody else.
  void HandedOver();
  void EndAsked();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Build();
  void ShowWhose();
  void Try();
  void SetBusy(bool isBusy);
  void AskForAdministrator();

  Session& m_session;
  Door& m_door;
  Account m_account;
  QString m_place;
  Entry m_entry;
  PasswordLine* m_password;
  AlertLabel* m_alert;
  QPushButton* m_unlock;
  QLabel* m_text;
};

}  // namespace host
