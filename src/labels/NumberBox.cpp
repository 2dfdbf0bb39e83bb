#include "labels/NumberBox.h"

#include "framework/Desktop.h"
#include "labels/SheetRules.h"
#include "labels/UpDown.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include <utility>

using namespace framework;

namespace labels {

namespace {

bool IsBelow(const QString& text, const QString& other) {
  const std::optional<automation::Currency> number = BoundedNumber(text);
  const std::optional<automation::Currency> otherNumber = BoundedNumber(other);
  return number && otherNumber && number->Scaled() < otherNumber->Scaled();
}

}  // namespace

NumberBox::NumberBox(QLineEdit* box, const UpDown* spinner) : QObject(box), m_box(box), m_spinner(spinner) {
  box->installEventFilter(this);
  connect(box, &QLineEdit::textEdited, this, [this](const QString& text) { m_typed = text; });
  // The focus that leaves takes the selection along.
  connect(box, &QLineEdit::selectionChanged, this, [this] {
    if (m_box->selectedText() != m_box->text()) {
      m_replaced.reset();
    }
  });
}

bool NumberBox::Bound() {
  const QString text = m_box->text();
  if (!BoundedNumber(text)) {
    Desktop::Current().Beep();
    m_box->setText(m_lastNumber);
    return false;
  }
  if (const std::optional<QString> bound = BoundFor(text, m_spinner->Bounds())) {
    Replace(*bound);
    return false;
  }
  m_lastNumber = text;
  m_typed.reset();
  return true;
}

void NumberBox::Replace(const QString& text) {
  const QString replaced = m_box->text();
  const bool wasTyped = std::exchange(m_typed, std::nullopt) == replaced;
  m_box->setText(text);
  if (wasTyped && IsBelow(replaced, text)) {
    m_replaced = replaced;
    m_box->selectAll();
  }
}

bool NumberBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isCommand = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const QString typed = key->text();
    if (m_replaced && !isCommand && !typed.isEmpty() && typed[0].isPrint()) {
      const QSignalBlocker quiet(m_box);
      m_box->setText(*std::exchange(m_replaced, std::nullopt));
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace labels
