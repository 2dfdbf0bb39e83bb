#include "support/Driver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace support {

namespace {

QString IconName(QMessageBox::Icon icon) {
  switch (icon) {
    case QMessageBox::Information:
      return QStringLiteral("informacion");
    case QMessageBox::Warning:
      return QStringLiteral("aviso");
    case QMessageBox::Critical:
      return QStringLiteral("critico");
    case QMessageBox::Question:
      return QStringLiteral("pregunta");
    default:
      return QStringLiteral("ninguno");
  }
}

std::runtime_error WrongKind(const QString& name) {
  return std::runtime_error(("control of another kind: " + name).toStdString());
}

}  // namespace

QWidget* DialogUser::Usable(const QString& name) const {
  auto* control = Find<QWidget>(name);
  if (!control->isVisible()) {
    throw std::runtime_error(("hidden control " + name).toStdString());
  }
  return control;
}

void DialogUser::Type(const QString& name, const QString& text) const {
  QWidget* control = Usable(name);
  control->setFocus(Qt::TabFocusReason);
  QTest::keySequence(control, QKeySequence::SelectAll);
  QTest::keyClick(control, Qt::Key_Delete);
  QTest::keyClicks(control, text);
}

void DialogUser::Keys(const QString& name, const QString& keys) const {
  QWidget* control = Usable(name);
  control->setFocus(Qt::OtherFocusReason);
  QTest::keyClicks(control, keys);
}

void DialogUser::Paste(const QString& name, const QString& text) const {
  QWidget* control = Usable(name);
  control->setFocus(Qt::TabFocusReason);
  QApplication::clipboard()->setText(text);
  QTest::keySequence(control, QKeySequence::SelectAll);
  QTest::keySequence(control, QKeySequence::Paste);
}

void DialogUser::Press(const QString& name) const {
  QTest::mouseClick(Usable(name), Qt::LeftButton);
}

void DialogUser::Choose(const QString& name, const QString& text) const {
  auto* combo = qobject_cast<QComboBox*>(Usable(name));
  if (combo == nullptr) {
    throw WrongKind(name);
  }
  const int index = combo->findText(text);
  if (index < 0) {
    throw std::runtime_error(("no item " + text + " in " + name).toStdString());
  }
  combo->setFocus();
  combo->setCurrentIndex(index);
  Q_EMIT combo->activated(index);
}

QString DialogUser::Text(const QString& name) const {
  if (name.isEmpty()) {
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
  throw WrongKind(name);
}

QStringList DialogUser::Items(const QString& combo) const {
  auto* control = Find<QComboBox>(combo);
  QStringList items;
  for (int i = 0; i < control->count(); ++i) {
    items.append(control->itemText(i));
  }
  return items;
}

bool DialogUser::IsEnabled(const QString& name) const {
  return Find<QWidget>(name)->isEnabled();
}

bool DialogUser::IsVisible(const QString& name) const {
  return Find<QWidget>(name)->isVisible();
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
    throw std::runtime_error(("cannot write " + file).toStdString());
  }
}

Driver::Driver() {
  qApp->installEventFilter(this);
}

Driver::~Driver() {
  qApp->removeEventFilter(this);
}

void Driver::On(const QString& dialog, Script script) {
  m_scripts.append({dialog, std::move(script)});
}

void Driver::Answer(int button) {
  m_answers.append({.button = button});
}

void Driver::AnswerInput(const QString& text) {
  m_answers.append({.input = true, .text = text});
}

void Driver::AnswerByClosing() {
  m_answers.append({.button = QMessageBox::NoButton});
}

QStringList Driver::TakeBoxes() {
  return std::exchange(m_boxes, {});
}

QStringList Driver::TakeProblems() {
  for (const PlannedScript& planned : m_scripts) {
    m_problems.append(QStringLiteral("never shown: ") + planned.dialog);
  }
  if (!m_answers.isEmpty()) {
    m_problems.append(QStringLiteral("%1 answers not asked for").arg(m_answers.size()));
  }
  m_scripts.clear();
  m_answers.clear();
  return std::exchange(m_problems, {});
}

bool Driver::eventFilter(QObject* watched, QEvent* event) {
  auto* dialog = qobject_cast<QDialog*>(watched);
  if (dialog != nullptr && event->type() == QEvent::Show && !event->spontaneous()) {
    QTimer::singleShot(0, this, [this, pointer = QPointer<QDialog>(dialog)] {
      if (pointer && pointer->isVisible()) {
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
  const QString line = box->windowTitle() + u'|' + IconName(box->icon()) + u'|' + box->text();
  m_boxes.append(line);
  const bool planned = !m_answers.isEmpty() && !m_answers.first().input;
  if (!planned) {
    m_problems.append(QStringLiteral("not foreseen: ") + line);
    box->reject();
    return;
  }
  const int answer = m_answers.takeFirst().button;
  QAbstractButton* button = box->button(static_cast<QMessageBox::StandardButton>(answer));
  if (answer == QMessageBox::NoButton) {
    box->reject();
  } else if (button == nullptr) {
    m_problems.append(QStringLiteral("button not offered: ") + line);
    box->reject();
  } else {
    QTest::mouseClick(button, Qt::LeftButton);
  }
}

void Driver::OnInputBox(QDialog* dialog) {
  auto* box = static_cast<QInputDialog*>(dialog);
  m_boxes.append(box->windowTitle() + QStringLiteral("|entrada|") + box->labelText());
  const bool planned = !m_answers.isEmpty() && m_answers.first().input;
  if (!planned) {
    m_problems.append(QStringLiteral("not foreseen: ") + box->labelText());
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
    m_problems.append(QStringLiteral("not foreseen: ") + name);
  } else {
    const Script script = planned->script;
    m_scripts.erase(planned);
    try {
      script(DialogUser(dialog));
      if (open && open->isVisible()) {
        m_problems.append(QStringLiteral("still open: ") + name);
      }
    } catch (const std::exception& error) {
      m_problems.append(name + QStringLiteral(": ") + QString::fromUtf8(error.what()));
    }
  }
  if (open && open->isVisible()) {
    open->done(QDialog::Rejected);
  }
}

}  // namespace support
