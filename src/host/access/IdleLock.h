#pragma once

#include "host/access/LockBox.h"
#include "host/services/Rescue.h"
#include "platform/process/TerminationSignals.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <memory>
#include <vector>

namespace host {

/// Locks the program when nobody has used it for a while, or when the user says so. Nothing is closed or hidden, for a
/// modal dialog that is hidden ends: each window, dialog and box, those that appear later, too, gets an opaque cover as
/// a child, and loses its title, which may name a record; keys and mouse reach nothing but the box for the password,
/// and who reads the screen learns of nothing else. What runs goes on. A program that is told to end while it is locked
/// ends without a question, and what was typed is kept.
class IdleLock : public QObject {
  Q_OBJECT

 public:
  /// Watches the whole application while it lives. Borrows all but the account, who unlocks it.
  IdleLock(Session& session, Door& door, Rescue& rescue, const Account& account, const QString& place);
  ~IdleLock() override;

  /// After so long without use; 0 for never.
  void SetIdle(std::chrono::milliseconds idle);
  void Lock();
  bool IsLocked() const { return m_isLocked; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// An administrator wants the program for somebody else: it has to end and begin anew.
  void HandedOver();

 private:
  struct Covered {
    QPointer<QWidget> window;
    QPointer<QWidget> cover;
    QString title;
  };

  void Used();
  void CoverWindow(QWidget& window);
  Covered* FindCovered(const QObject* window);
  /// Of the box for the password, or of a dialog above it.
  bool IsOfTheBox(const QObject* object) const;
  bool HearLocked(QObject* watched, QEvent* event);
  void ShowBoxAgain();
  void Answer(QDialog& box);
  void Unlock();
  void HearSignals();
  void BeginEnd();

  QString m_title;
  Rescue& m_rescue;
  LockBox m_box;
  QTimer m_timer;
  qint64 m_idle = 0;     ///< In milliseconds.
  qint64 m_lastUse = 0;  ///< By the clock, which goes on while the machine sleeps.
  bool m_isLocked = false;
  bool m_isEnding = false;
  std::unique_ptr<process::TerminationSignals> m_signals;  ///< While it is locked.
  std::vector<Covered> m_covered;
  QPointer<QWidget> m_focus;
};

}  // namespace host
