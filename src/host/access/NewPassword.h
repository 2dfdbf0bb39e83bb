#pragma once

#include "host/access/Beside.h"
#include "host/access/Entry.h"

#include <QDialog>
#include <QString>
#include <QStringList>

class QLineEdit;
class QPushButton;

namespace host {

class AlertLabel;
class PasswordLine;

/// Asks for a new password, twice, and hashes it beside the window. Accepted when there is a hash.
class NewPassword : public QDialog {
  Q_OBJECT

 public:
  struct Question {
    QString title;
    QString text;           ///< What for, a sentence.
    QStringList names;      ///< What the password may not be.
    bool asksName = false;  ///< Also for the name of the user.
    QString name = {};
    bool asksCurrent = false;  ///< Also for the password until now; see SetCurrentCheck.
  };

  explicit NewPassword(const Question& question, QWidget* parent = nullptr);

  const QString& Hash() const { return m_hash; }
  QString Name() const;
  /// The password until now is that of this account.
  void SetCurrentCheck(Session& session, Door& door, const Account& account);

 private:
  void Build(const Question& question);
  void Take();
  void Make();
  void Refuse(const QString& text, QLineEdit& box);
  void SetBusy(bool isBusy);

  QStringList m_names;
  QString m_hash;
  Beside m_beside;
  std::unique_ptr<Entry> m_entry;
  Account m_account;
  QLineEdit* m_name = nullptr;
  PasswordLine* m_current = nullptr;
  PasswordLine* m_first;
  PasswordLine* m_second;
  AlertLabel* m_alert;
  QPushButton* m_accept = nullptr;
};

/// Lets the session's user choose another password; with a door the one until now is asked for. False when the user
/// gives up, and where it can't be saved, which is shown.
bool ChooseOwnPassword(Session& session, const QString& text, Door* door, QWidget* parent = nullptr);

}  // namespace host
