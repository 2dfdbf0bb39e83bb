#pragma once

#include "host/access/UserRules.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

namespace host {

class AlertLabel;

/// Name and rights of a user. Accepted when they are saved.
class UserDialog : public QDialog {
  Q_OBJECT

 public:
  /// Borrows the session. `account` is who is changed; one with the key 0 is a new user.
  UserDialog(Session& session, const Account& account, QWidget* parent = nullptr);

  /// Of the saved user.
  int Id() const { return m_id; }

 private:
  void Build(const Account& account);
  void Save();

  Session& m_session;
  int m_id;
  QLineEdit* m_name;
  QLineEdit* m_fullName;
  QComboBox* m_rights;
  AlertLabel* m_alert;
};

}  // namespace host
