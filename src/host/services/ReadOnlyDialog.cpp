#include "host/services/ReadOnlyDialog.h"

#include "host/records/OpenConnection.h"
#include "host/services/MessageBox.h"
#include "platform/automation/Error.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTextEdit>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {
namespace {

constexpr const char* servesAsBefore = "SirveEnConsulta";

bool ServesAsBefore(const QObject& object) {
  return object.property(servesAsBefore).toBool();
}

// Parts of other controls have no name, or one of the toolkit's.
bool IsControl(const QObject& object) {
  return !object.objectName().isEmpty() && !object.objectName().startsWith("qt_"_L1);
}

// A button of a tool bar is as its action is.
bool ShowsAction(const QObject& object) {
  const auto* button = qobject_cast<const QToolButton*>(&object);
  return button != nullptr && button->defaultAction() != nullptr;
}

// As a box that takes nothing looks: without the field's colour.
void ShowAsFixed(QWidget& control) {
  QPalette palette = control.palette();
  palette.setColor(QPalette::Base, palette.color(QPalette::Window));
  palette.setColor(QPalette::Button, palette.color(QPalette::Window));
  control.setPalette(palette);
}

// A mark that cannot be set is no less worth reading.
void ShowReadably(QAbstractButton& button) {
  if (!button.isCheckable()) {
    return;
  }
  QPalette palette = button.palette();
  palette.setColor(QPalette::Disabled, QPalette::WindowText, palette.color(QPalette::Active, QPalette::WindowText));
  palette.setColor(QPalette::Disabled, QPalette::Text, palette.color(QPalette::Active, QPalette::Text));
  button.setPalette(palette);
}

template <typename TextEdit>
void MakeReadable(TextEdit& text) {
  text.setReadOnly(true);
  text.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  ShowAsFixed(text);
}

// What would choose another item of a list; what moves the focus, closes the dialog or asks for help passes.
bool ChangesList(QComboBox& list, const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::InputMethod:
      return true;
    case QEvent::KeyPress: {
      const auto& key = static_cast<const QKeyEvent&>(event);
      if (key.matches(QKeySequence::Copy)) {
        QApplication::clipboard()->setText(list.currentText());
      }
      const int passing[] = {Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Escape, Qt::Key_F1};
      return std::ranges::find(passing, key.key()) == std::end(passing);
    }
    default:
      return false;
  }
}

// An editor that breaks lines by itself may do so in a text that nobody can change.
bool BreaksLine(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) {
    return false;
  }
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// What dialogs take as a command to change the row.
bool ChangesRow(const QEvent& event) {
  if (event.type() == QEvent::KeyPress) {
    const int commands[] = {Qt::Key_Insert, Qt::Key_Delete, Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2, Qt::Key_Space};
    return std::ranges::find(commands, static_cast<const QKeyEvent&>(event).key()) != std::end(commands);
  }
  return event.type() == QEvent::MouseButtonDblClick;
}

}  // namespace

ReadOnlyDialog::ReadOnlyDialog(QDialog& dialog, QObject& blocked, Session& session)
    : QObject(&blocked), m_dialog(&dialog), m_session(session), m_holder(session.lastRefusal) {
  dialog.installEventFilter(this);
  if (dialog.isVisible()) {
    Apply();
  }
}

bool ReadOnlyDialog::Holds(const QObjectList& controls) {
  for (const QObject* control : controls) {
    if (const auto* widget = qobject_cast<const QWidget*>(control)) {
      return widget->window()->findChild<ReadOnlyDialog*>() != nullptr;
    }
  }
  return false;
}

bool ReadOnlyDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_dialog) {
    if (event->type() == QEvent::Show) {
      Apply();
    }
    return false;
  }
  if (auto* list = qobject_cast<QComboBox*>(watched)) {
    return ChangesList(*list, *event);
  }
  if (qobject_cast<QTextEdit*>(watched) != nullptr) {
    return BreaksLine(*event);
  }
  if (qobject_cast<QAbstractItemView*>(watched) != nullptr ||
      qobject_cast<QAbstractItemView*>(watched->parent()) != nullptr) {
    return ChangesRow(*event);
  }
  if (event->type() == QEvent::EnabledChange) {
    static_cast<QWidget*>(watched)->setEnabled(false);
  }
  return false;
}

// Once the dialog is complete: until its showing it fills its fields and chooses its title.
void ReadOnlyDialog::Apply() {
  if (m_applied) {
    return;
  }
  m_applied = true;
  const QList<QWidget*> controls = m_dialog->findChildren<QWidget*>();
  for (QWidget* control : controls) {
    if (IsControl(*control) && !ShowsAction(*control) && !ServesAsBefore(*control)) {
      Block(*control);
    }
  }
  const QList<QAction*> actions = m_dialog->findChildren<QAction*>();
  for (QAction* action : actions) {
    if (action->menu() == nullptr && !ServesAsBefore(*action)) {
      BlockAction(*action);
    }
  }
  const QList<QShortcut*> shortcuts = m_dialog->findChildren<QShortcut*>();
  for (QShortcut* shortcut : shortcuts) {
    shortcut->setEnabled(ServesAsBefore(*shortcut));
  }
  m_dialog->setWindowTitle(m_dialog->windowTitle() + u" (solo lectura)"_s);
  if (m_holder && m_dialog->layout() != nullptr) {
    AddStrip();
  }
}

void ReadOnlyDialog::Block(QWidget& control) {
  if (auto* line = qobject_cast<QLineEdit*>(&control)) {
    line->setReadOnly(true);
    ShowAsFixed(*line);
  } else if (auto* rich = qobject_cast<QTextEdit*>(&control)) {
    MakeReadable(*rich);
    rich->installEventFilter(this);
  } else if (auto* plain = qobject_cast<QPlainTextEdit*>(&control)) {
    MakeReadable(*plain);
  } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(&control)) {
    spin->setReadOnly(true);
    ShowAsFixed(*spin);
  } else if (auto* list = qobject_cast<QComboBox*>(&control)) {
    if (list->isEditable()) {
      list->lineEdit()->setReadOnly(true);
    }
    ShowAsFixed(*list);
    list->installEventFilter(this);
  } else if (auto* view = qobject_cast<QAbstractItemView*>(&control)) {
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->installEventFilter(this);
    view->viewport()->installEventFilter(this);
  } else if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
    ShowReadably(*button);
    Disable(*button);
  } else if (qobject_cast<QAbstractSlider*>(&control) != nullptr && qobject_cast<QScrollBar*>(&control) == nullptr) {
    Disable(control);
  }
}

void ReadOnlyDialog::Disable(QWidget& control) {
  control.setEnabled(false);
  control.installEventFilter(this);
}

void ReadOnlyDialog::BlockAction(QAction& action) {
  action.setEnabled(false);
  connect(&action, &QAction::enabledChanged, this, [&action] { action.setEnabled(false); });
}

void ReadOnlyDialog::AddStrip() {
  auto* strip = new QFrame(m_dialog);
  strip->setObjectName(u"readOnlyStrip"_s);
  strip->setFrameShape(QFrame::StyledPanel);
  m_reason = new QLabel(m_holder->Description() + u'.', strip);
  m_reason->setObjectName(u"readOnlyReason"_s);
  m_reason->setTextFormat(Qt::PlainText);
  m_reason->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  m_reason->setWordWrap(true);
  auto* again = new QPushButton(u"&Volver a intentarlo"_s, strip);
  again->setObjectName(u"readOnlyRetry"_s);
  again->setAutoDefault(false);
  connect(again, &QPushButton::clicked, this, &ReadOnlyDialog::TryAgain);
  auto* row = new QHBoxLayout(strip);
  row->addWidget(m_reason, 1);
  row->addWidget(again);

  // The one place above a layout of whatever kind; a dialog with a menu keeps that above the strip.
  QWidget* top = strip;
  if (QWidget* menu = m_dialog->layout()->menuBar()) {
    top = new QWidget(m_dialog);
    auto* column = new QVBoxLayout(top);
    column->setContentsMargins({});
    column->addWidget(menu);
    column->addWidget(strip);
  }
  top->show();
  strip->show();
  m_dialog->layout()->setMenuBar(top);
  m_dialog->resize(
      (m_dialog->size() + QSize(0, top->sizeHint().height())).boundedTo(m_dialog->screen()->availableSize()));
}

void ReadOnlyDialog::TryAgain() {
  std::optional<LockHolder> refusal;
  std::optional<DeletedRecord> deleted;
  try {
    refusal = m_session.Locks().Take(m_holder->keyColumn, m_holder->key);
    deleted = refusal ? std::nullopt : DeletedSince();
    if (deleted) {
      m_session.Locks().Release(m_holder->keyColumn, m_holder->key);
    }
  } catch (const automation::Error& error) {
    ShowMessage(QMessageBox::Critical, error.Description(), m_session.title);
    return;
  }
  if (refusal) {
    m_reason->setText(u"Sigue sin estar libre. %1."_s.arg(refusal->Description()));
    return;
  }
  if (deleted) {
    m_reason->setText(deleted->Sentence({}));
    return;
  }
  m_session.openAgain = m_holder;
  m_dialog->reject();
}

std::optional<DeletedRecord> ReadOnlyDialog::DeletedSince() const {
  const Node* node = FindNodeByKey(m_holder->keyColumn);
  return node != nullptr ? FindDeleted(Opened(m_session.connection), *node, m_holder->key) : std::nullopt;
}

}  // namespace host
