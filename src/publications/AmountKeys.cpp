#include "publications/AmountKeys.h"

#include "framework/PasteGuard.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

using namespace framework;

namespace publications {
namespace {

bool MayStandInAnAmount(QChar c) {
  return (c >= u'0' && c <= u'9') || QStringView(u",.-€ ").contains(c);
}

std::optional<QString> ReadAmount(const QString& pasted) {
  return std::ranges::all_of(pasted, MayStandInAnAmount) ? std::optional(pasted) : std::nullopt;
}

}  // namespace

AmountKeys::AmountKeys(QLineEdit* box) : QObject(box), m_box(box), m_guard(new PasteGuard(box, ReadAmount)) {
  box->installEventFilter(this);
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
    m_guard->SetKeyUnderWay(true);
    m_box->insert(QChar(static_cast<char16_t>(key)));
    m_guard->SetKeyUnderWay(false);
  }
  return true;
}

}  // namespace publications
