#include "support/Driver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace support {

namespace {

QString IconName(QMessageBox::Icon icon) {
  switch (icon) {
    case QMessageBox::Information:
      return u"informacion"_s;
    case QMessageBox::Warning:
      return u"aviso"_s;
    case QMessageBox::Critical:
      return u"critico"_s;
    case QMessageBox::Question:
      return u"pregunta"_s;
    default:
      return u"ninguno"_s;
  }
}

// Types a text character by character; a pair of surrogates is one character.
void TypeCharacters(QWidget* control, const QString& text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool pair = text[i].isHighSurrogate() && i + 1 < text.size();
    const QString character = text.mid(i, pair ? 2 : 1);
    i += pair ? 1 : 0;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, character[0].toUpper().unicode() < 128 ? character[0].toUpper().unicode() : 0,
                      Qt::NoModifier, character);
      QApplication::sendEvent(control, &event);
    }
  }
}

/// The button that opens what has no room on the tool bar, where that is so for the control; null otherwise.
QToolButton* ExtensionOver(const QWidget* control) {
  const auto* bar = qobject_cast<const QToolBar*>(control->parentWidget());
  auto* more = bar == nullptr ? nullptr : bar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
  return control->isVisible() || more == nullptr || !more->isVisible() || more->menu() == nullptr ? nullptr : more;
}

}  // namespace

QWidget* DialogUser::Usable(const char* name) const {
  auto* control = Find<QWidget>(name);
  if (!control->isVisible()) {
    throw Failure("hidden control", QString::fromUtf8(name));
  }
  // Under a box of the host's own, which gives nothing back where no window manager does.
  if (!m_dialog->isActiveWindow()) {
    m_dialog->activateWindow();
    if (!QTest::qWaitForWindowActive(m_dialog)) {
      throw Failure("window not active:", m_dialog->objectName());
    }
  }
  return control;
}

void DialogUser::Type(const char* name, const QString& text) const {
  QWidget* control = Usable(name);
  control->setFocus(Qt::TabFocusReason);
  QTest::keySequence(control, QKeySequence::SelectAll);
  QTest::keyClick(control, Qt::Key_Delete);
  TypeCharacters(control, text);
}

void DialogUser::Keys(const char* name, const QString& keys) const {
  QWidget* control = Usable(name);
  control->setFocus(Qt::OtherFocusReason);
  TypeCharacters(control, keys);
}

void DialogUser::Paste(const char* name, const QString& text) const {
  QWidget* control = Usable(name);
  control->setFocus(Qt::TabFocusReason);
  QApplication::clipboard()->setText(text);
  QTest::keySequence(control, QKeySequence::SelectAll);
  QTest::keySequence(control, QKeySequence::Paste);
}

void DialogUser::Press(const char* name) const {
  if (QToolButton* more = ExtensionOver(Find<QWidget>(name))) {
    // Its menu waits for a choice.
    QTimer::singleShot(0, more, [more, name] {
      QMenu* menu = more->menu();
      const QList<QAction*> items = menu->actions();
      const auto item = std::find_if(items.begin(), items.end(), [name](const QAction* action) {
        return action->objectName() == QString::fromUtf8(name);
      });
      if (item == items.end()) {
        menu->close();
      } else {
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(*item).center());
      }
    });
    QTest::mouseClick(more, Qt::LeftButton);
    return;
  }
  QTest::mouseClick(Usable(name), Qt::LeftButton);
}

void DialogUser::Choose(const char* name, const QString& text) const {
  auto* combo = qobject_cast<QComboBox*>(Usable(name));
  if (combo == nullptr) {
    throw Failure("control of another kind:", QString::fromUtf8(name));
  }
  // Whoever goes to a list leaves another control, which may fill it.
  combo->setFocus();
  const int index = combo->findText(text);
  if (index < 0) {
    throw Failure("no item", text);
  }
  combo->setCurrentIndex(index);
  Q_EMIT combo->activated(index);
}

QString DialogUser::Text(const char* name) const {
  if (*name == '\0') {
    return m_dialog->windowTitle();
  }
  auto* control = Find<QWidget>(name);
  if (auto* edit = qobject_cast<QLineEdit*>(control)) {
    return edit->text();
  }
  if (auto* label = qobject_cast<QLabel*>(control)) {
    return label->text();
  }
  if (auto* button = qobject_cast<QAbstractButton*>(control)) {
    return button->text();
  }
  if (auto* group = qobject_cast<QGroupBox*>(control)) {
    return group->title();
  }
  if (auto* combo = qobject_cast<QComboBox*>(control)) {
    return combo->currentText();
  }
  throw Failure("control of another kind:", QString::fromUtf8(name));
}

QStringList DialogUser::Items(const char* combo) const {
  auto* control = Find<QComboBox>(combo);
  QStringList items;
  for (int i = 0; i < control->count(); ++i) {
    items.append(control->itemText(i));
  }
  return items;
}

bool DialogUser::IsEnabled(const char* name) const {
  return Find<QWidget>(name)->isEnabled();
}

bool DialogUser::IsVisible(const char* name) const {
  return Find<QWidget>(name)->isVisible();
}

QString DialogUser::Focused() const {
  return m_dialog->focusWidget() != nullptr ? m_dialog->focusWidget()->objectName() : QString();
}

void DialogUser::Close() const {
  m_dialog->close();
}

void DialogUser::Key(Qt::Key key) const {
  QWidget* target = m_dialog->focusWidget() != nullptr ? m_dialog->focusWidget() : m_dialog.data();
  QTest::keyClick(target, key);
}

void DialogUser::Screenshot(const QString& file) const {
  if (!m_dialog->grab().save(file)) {
    throw Failure("cannot write", file);
  }
}

Driver::Driver() {
  qApp->installEventFilter(this);
}

Driver::~Driver() {
  qApp->removeEventFilter(this);
}

void Driver::On(const char* dialog, Script script) {
  m_scripts.append({QString::fromUtf8(dialog), std::move(script)});
}

void Driver::Answer(int button) {
  m_answers.append(PlannedAnswer{.button = button});
}

void Driver::AnswerInput(const QString& text) {
  m_answers.append(PlannedAnswer{.input = true, .text = text});
}

void Driver::AnswerByClosing() {
  m_answers.append(PlannedAnswer{.button = QMessageBox::NoButton});
}

QStringList Driver::TakeBoxes() {
  return std::exchange(m_boxes, {});
}

QStringList Driver::TakeProblems() {
  for (const PlannedScript& planned : m_scripts) {
    m_problems.append(u"never shown: "_s + planned.dialog);
  }
  if (!m_answers.isEmpty()) {
    m_problems.append(u"%1 answers not asked for"_s.arg(m_answers.size()));
  }
  m_scripts.clear();
  m_answers.clear();
  return std::exchange(m_problems, {});
}

bool Driver::eventFilter(QObject* watched, QEvent* event) {
  auto* dialog = qobject_cast<QDialog*>(watched);
  if (dialog != nullptr && event->type() == QEvent::Show && !event->spontaneous()) {
    QTimer::singleShot(0, this, [this, pointer = QPointer<QDialog>(dialog)] {
      if (pointer && pointer->isVisible() && QTest::qWaitForWindowActive(pointer) && pointer) {
        OnShown(pointer);
      }
    });
  }
  return QObject::eventFilter(watched, event);
}

void Driver::OnShown(QDialog* dialog) {
  if (qobject_cast<QMessageBox*>(dialog) != nullptr) {
    OnMessageBox(dialog);
  } else if (qobject_cast<QInputDialog*>(dialog) != nullptr) {
    OnInputBox(dialog);
  } else if (dialog->isModal()) {
    OnDialog(dialog);
  }
}

void Driver::OnMessageBox(QDialog* dialog) {
  auto* box = static_cast<QMessageBox*>(dialog);
  QString more;
  for (const QString& text : {box->informativeText(), box->detailedText()}) {
    more += text.isEmpty() ? QString() : u'|' + text;
  }
  const QString line = box->windowTitle() + u'|' + IconName(box->icon()) + u'|' + box->text() + more;
  m_boxes.append(line);
  if (box->textFormat() != Qt::PlainText) {
    m_problems.append(QStringLiteral("not plain text: ") + line);
  }
  const bool planned = !m_answers.isEmpty() && !m_answers.first().input;
  if (!planned) {
    m_problems.append(u"not foreseen: "_s + line);
    box->reject();
    return;
  }
  const int answer = m_answers.takeFirst().button;
  QAbstractButton* button = box->button(static_cast<QMessageBox::StandardButton>(answer));
  if (answer == QMessageBox::NoButton) {
    box->reject();
  } else if (button == nullptr) {
    m_problems.append(u"button not offered: "_s + line);
    box->reject();
  } else {
    QTest::mouseClick(button, Qt::LeftButton);
  }
}

void Driver::OnInputBox(QDialog* dialog) {
  auto* box = static_cast<QInputDialog*>(dialog);
  m_boxes.append(box->windowTitle() + u"|entrada|"_s + box->labelText());
  const bool planned = !m_answers.isEmpty() && m_answers.first().input;
  if (!planned) {
    m_problems.append(u"not foreseen: "_s + box->labelText());
    box->reject();
    return;
  }
  const QString text = m_answers.takeFirst().text;
  if (text.isNull()) {
    box->reject();
  } else {
    box->setTextValue(text);
    box->accept();
  }
}

void Driver::OnDialog(QDialog* dialog) {
  const QPointer<QDialog> open = dialog;
  const QString name = dialog->objectName();
  const auto planned = std::find_if(m_scripts.begin(), m_scripts.end(),
                                    [&](const PlannedScript& script) { return script.dialog == name; });
  if (planned == m_scripts.end()) {
    m_problems.append(u"not foreseen: "_s + name);
  } else {
    const Script script = planned->script;
    m_scripts.erase(planned);
    try {
      script(DialogUser(dialog));
      if (open && open->isVisible()) {
        m_problems.append(u"still open: "_s + name);
      }
    } catch (const std::exception& error) {
      m_problems.append(name + u": "_s + QString::fromUtf8(error.what()));
    }
  }
  if (open && open->isVisible()) {
    m_end(*open);
  }
}

}  // namespace support
