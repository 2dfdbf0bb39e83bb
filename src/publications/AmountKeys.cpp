#include "publications/AmountKeys.h"

#include "framework/Desktop.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <algorithm>

using namespace framework;

namespace publications {
namespace {

bool MayStandInAnAmount(QChar c) {
  return (c >= u'0' && c <= u'9') || QStringView(u",.-€ ").contains(c);
}

}  // namespace

AmountKeys::AmountKeys(QLineEdit* box) : QObject(box), m_box(box) {
  box->installEventFilter(this);
  connect(box, &QLineEdit::textEdited, this, &AmountKeys::OnEdited);
}

bool AmountKeys::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_box || event->type() != QEvent::KeyPress) {
    return QObject::eventFilter(watched, event);
  }
  const auto* press = static_cast<QKeyEvent*>(event);
  const QChar typed = press->text().isEmpty() ? QChar() : press->text().front();
  const bool isCommand = press->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  const bool isCharacter = typed.isPrint() || typed == u'\b';
  if (isCommand || !isCharacter) {
    return false;
  }
  int key = typed.unicode();
  Q_EMIT Typed(&key);
  if (key == u'\b') {
    return false;
  }
  if (key != 0) {
    const QScopedValueRollback typing(m_isTyping, true);
    m_box->insert(QChar(static_cast<char16_t>(key)));
  }
  return true;
}

void AmountKeys::OnEdited(const QString& text) {
  QString kept;
  std::ranges::copy_if(text, std::back_inserter(kept), MayStandInAnAmount);
  if (!m_isTyping && kept != text) {
    m_box->setText(kept);
    Desktop::Current().Beep();
  }
}

}  // namespace publications
