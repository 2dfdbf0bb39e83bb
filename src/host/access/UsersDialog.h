#pragma once

#include "host/access/Accounts.h"
#include "host/records/ComponentBridge.h"

#include <QDialog>
#include <QList>

#include <functional>

class QCheckBox;
class QPushButton;
class QSpinBox;
class QTreeWidget;

namespace host {

/// The users of a file, for an administrator: who there is, what they may, when they were here, their first passwords,
/// and whether a password is asked for at all.
class UsersDialog : public QDialog {
  Q_OBJECT

 public:
  /// Borrows the bridge.
  explicit UsersDialog(ComponentBridge& bridge, QWidget* parent = nullptr);

  /// Reads the list anew; an error is shown, and the list stays.
  void Read();

 Q_SIGNALS:
  /// Whether passwords are asked for, or after how long the program locks.
  void SettingsChanged();

 private:
  void BuildList();
  QWidget* BuildButtons();
  QWidget* BuildSettings();
  QPushButton* Button(const char* name, const QString& text, void (UsersDialog::*act)());
  const Account* Chosen() const;
  void Choose(int id);
  void ShowChoice();
  void Add();
  void Modify();
  void GivePassword();
  void SwitchOff();
  void Delete();
  void AskAtStart(bool wanted);
  void SetIdle();
  /// False where it could not be done, which is shown.
  bool Try(const QString& what, const std::function<void()>& work);

  ComponentBridge& m_bridge;
  QList<Account> m_accounts;
  QTreeWidget* m_list;
  QPushButton* m_modify = nullptr;
  QPushButton* m_password = nullptr;
  QPushButton* m_switch = nullptr;
  QPushButton* m_delete = nullptr;
  QCheckBox* m_asks;
  QCheckBox* m_locks;
  QSpinBox* m_minutes;
};

}  // namespace host
