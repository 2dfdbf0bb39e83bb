#include "host/access/IdleLock.h"

#include "host/access/CoveredWindow.h"

#include <QApplication>
#include <QDateTime>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QWindow>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::NativeGesture:
      return true;
    default:
      return false;
  }
}

bool IsLockKey(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) {
    return false;
  }
  const auto& key = static_cast<const QKeyEvent&>(event);
  return key.key() == Qt::Key_L && key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
}

bool MayShowSomething(const QWidget& widget) {
  return widget.isWindow() && widget.windowType() != Qt::ToolTip && widget.windowType() != Qt::Popup;
}

}  // namespace

IdleLock::IdleLock(Session& session, Door& door, Rescue& rescue, const Account& account, const QString& place)
    : m_title(session.title), m_rescue(rescue), m_box(session, door, account, place) {
  m_timer.setSingleShot(true);
  connect(&m_timer, &QTimer::timeout, this, [this] {
    const qint64 left = m_lastUse + m_idle - QDateTime::currentMSecsSinceEpoch();
    if (left <= 0) {
      Lock();
    } else {
      m_timer.start(static_cast<int>(std::min(left, m_idle)));
    }
  });
  connect(&m_box, &LockBox::Unlocked, this, &IdleLock::Unlock);
  connect(&m_box, &LockBox::HandedOver, this, &IdleLock::HandedOver);
  // The session ends, and nobody is there to end the program afterwards.
  connect(&m_box, &LockBox::EndAsked, this, [this] {
    BeginEnd();
    raise(SIGTERM);
  });
  Used();
  covered::TellReaders();
  qApp->installEventFilter(this);
}

IdleLock::~IdleLock() {
  if (m_isLocked) {
    Unlock();
  }
}

void IdleLock::SetIdle(std::chrono::milliseconds idle) {
  m_idle = idle.count();
  if (m_idle > 0) {
    m_timer.start(static_cast<int>(m_idle));
  } else {
    m_timer.stop();
  }
}

void IdleLock::Used() {
  m_lastUse = QDateTime::currentMSecsSinceEpoch();
}

void IdleLock::Lock() {
  if (m_isLocked) {
    return;
  }
  m_isLocked = true;
  m_timer.stop();
  m_focus = QApplication::focusWidget();
  while (QWidget* popup = QApplication::activePopupWidget()) {
    popup->close();
  }
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows) {
    if (window->isVisible() && MayShowSomething(*window)) {
      CoverWindow(*window);
    }
  }
  m_box.show();
  HearSignals();
}

void IdleLock::CoverWindow(QWidget& window) {
  if (FindCovered(&window) != nullptr || IsOfTheBox(&window)) {
    return;
  }
  auto* cover = new QLabel(u"Bloqueado"_s, &window);
  cover->setObjectName(covered::coverName);
  cover->setAlignment(Qt::AlignCenter);
  cover->setAutoFillBackground(true);
  cover->setGeometry(window.rect());
  m_covered.push_back({&window, cover, window.windowTitle()});
  window.setWindowTitle(m_title);
  cover->show();
  cover->raise();
  covered::ForgetWhatWasTold(window);
}

IdleLock::Covered* IdleLock::FindCovered(const QObject* window) {
  const auto found = std::ranges::find_if(m_covered, [&](const Covered& covered) { return covered.window == window; });
  return found == m_covered.end() ? nullptr : &*found;
}

bool IdleLock::IsOfTheBox(const QObject* object) const {
  if (object->isWindowType()) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(
        windows, [&](const QWidget* window) { return window->windowHandle() == object && IsOfTheBox(window); });
  }
  for (; object != nullptr; object = object->parent()) {
    if (object == &m_box) {
      return true;
    }
  }
  return false;
}

bool IdleLock::eventFilter(QObject* watched, QEvent* event) {
  if (m_isLocked) {
    return HearLocked(watched, event);
  }
  if (!IsInput(event->type())) {
    return false;
  }
  const bool isTooLate = m_idle > 0 && QDateTime::currentMSecsSinceEpoch() - m_lastUse >= m_idle;
  if (isTooLate || IsLockKey(*event)) {
    Lock();
    return true;
  }
  Used();
  return false;
}

bool IdleLock::HearLocked(QObject* watched, QEvent* event) {
  if (IsInput(event->type())) {
    // The help would be one more window that is covered.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1) {
      return true;
    }
    return (watched->isWidgetType() || watched->isWindowType()) && !IsOfTheBox(watched);
  }
  auto* window = watched->isWidgetType() ? static_cast<QWidget*>(watched) : nullptr;
  if (window == nullptr || !window->isWindow()) {
    return false;
  }
  Covered* covered = FindCovered(window);
  if (event->type() == QEvent::Show && MayShowSomething(*window) && !IsOfTheBox(window)) {
    CoverWindow(*window);
    if (auto* box = qobject_cast<QDialog*>(window); box != nullptr && m_isEnding) {
      QTimer::singleShot(0, box, [this, box] { Answer(*box); });
    } else if (!m_isEnding && window->isModal()) {
      QTimer::singleShot(0, this, &IdleLock::ShowBoxAgain);
    }
  } else if (covered != nullptr && event->type() == QEvent::WindowTitleChange && window->windowTitle() != m_title) {
    covered->title = window->windowTitle();
    window->setWindowTitle(m_title);
  } else if (covered != nullptr && covered->cover &&
             (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest ||
              event->type() == QEvent::ChildPolished)) {
    covered->cover->setGeometry(window->rect());
    covered->cover->raise();
  }
  return false;
}

// Of modal windows the one that was shown last gets the keys, and it is one only after its showing was told.
void IdleLock::ShowBoxAgain() {
  if (m_isLocked && !m_isEnding) {
    m_box.hide();
    m_box.show();
  }
}

// Nobody is there to be asked, and what was typed is kept.
void IdleLock::Answer(QDialog& box) {
  auto* question = qobject_cast<QMessageBox*>(&box);
  if (question != nullptr && question->button(QMessageBox::No) != nullptr) {
    question->button(QMessageBox::No)->click();
  } else if (question != nullptr) {
    question->reject();
  }
}

void IdleLock::Unlock() {
  m_isLocked = false;
  m_signals.reset();
  m_box.hide();
  for (const Covered& covered : m_covered) {
    if (covered.window) {
      covered.window->setWindowTitle(covered.title);
    }
    delete covered.cover;
    if (covered.window) {
      covered::ForgetWhatWasTold(*covered.window);
    }
  }
  m_covered.clear();
  if (m_focus) {
    m_focus->window()->activateWindow();
    m_focus->setFocus();
  }
  Used();
  if (m_idle > 0) {
    m_timer.start(static_cast<int>(m_idle));
  }
}

// Before the dialogs hear of it: they would wait for the event loop of the box, which has none.
void IdleLock::HearSignals() {
  m_signals = std::make_unique<process::TerminationSignals>();
  connect(m_signals.get(), &process::TerminationSignals::Received, this, [this](int number) {
    QTimer::singleShot(0, this, [this, number] {
      BeginEnd();
      raise(number);
    });
  });
}

void IdleLock::BeginEnd() {
  m_isEnding = true;
  m_rescue.KeepEverything();
  m_box.hide();
  m_signals.reset();
}

}  // namespace host
