#pragma once

#include "support/Driver.h"

#include "host/mailing/window/MailingWindow.h"
#include "host/mailing/window/PeopleTable.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

/// A mailing window used as a person does. The window and the driver, which answers its boxes, are others'.
class MailingUser {
 public:
  MailingUser(host::MailingWindow& window, support::Driver& driver) : m_window(window), m_driver(driver) { Wait(); }

  template <typename Control = QWidget>
  Control* Find(const char* name) const {
    auto* control = m_window.findChild<Control*>(QString::fromUtf8(name));
    if (control == nullptr) {
      throw support::Failure("no control", QString::fromUtf8(name));
    }
    return control;
  }
  host::PeopleTable& People() const { return *Find<host::PeopleTable>("lstPersonas"); }
  QString Text(const char* label) const { return Find<QLabel>(label)->text(); }
  QAction& Action(const char* name) const { return *Find<QAction>(name); }
  QString Notices() const { return Find("avisos")->isVisible() ? Find("avisos")->accessibleName() : QString(); }

  void Wait() const {
    if (!QTest::qWaitFor([this] { return !m_window.IsBusy(); }, 30'000)) {
      qWarning("the mailing window is still busy");
    }
  }
  void Choose(const char* box, const QString& item) const {
    auto* combo = Find<QComboBox>(box);
    const int place = combo->findText(item);
    if (place < 0) {
      throw support::Failure("no item", item);
    }
    combo->setCurrentIndex(place);
    Q_EMIT combo->activated(place);
    Wait();
  }
  void Press(const char* button) const {
    QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
    Wait();
  }
  void Trigger(const char* action) const {
    Action(action).trigger();
    Wait();
  }
  /// Begins to write into that file or folder.
  void Begin(const char* action, const char* dialog, const QString& target) const {
    m_driver.On(dialog, [target](const support::DialogUser& user) {
      user.Find<QLineEdit>("fileNameEdit")->setText(target);
      user.Dialog()->findChild<QDialogButtonBox*>()->buttons().constFirst()->click();
    });
    Action(action).trigger();
  }
  /// Writes, and what the status line says then.
  QString Make(const char* action, const char* dialog, const QString& target) const {
    Begin(action, dialog, target);
    Wait();
    return Text("lblEstado");
  }

 private:
  host::MailingWindow& m_window;
  support::Driver& m_driver;
};

inline QStringList FilesIn(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}
