#include "framework/KeyFilter.h"

#include "framework/Desktop.h"
#include "framework/PasteGuard.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace framework {

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

bool IsLetterOrDigit(QChar c) {
  return IsDigit(c) || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

KeyFilter::KeyFilter(QLineEdit* box, bool (*allowed)(QChar), int maxLength, Options options)
    : QObject(box), m_box(box), m_allowed(allowed), m_maxLength(maxLength), m_options(options) {
  box->installEventFilter(this);
  new PasteGuard(
      box, [this](const QString& inserted) { return Read(inserted); }, maxLength);
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_box && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const QString typed = key->text();
    const bool isCommand = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!isCommand && !typed.isEmpty() && typed[0].isPrint()) {
      return OnKey(typed);
    }
  }
  return QObject::eventFilter(watched, event);
}

// True when the key is swallowed.
bool KeyFilter::OnKey(const QString& typed) {
  if ((m_options & PointIsComma) && typed == u".") {
    QKeyEvent comma(QEvent::KeyPress, Qt::Key_Comma, Qt::NoModifier, QStringLiteral(","));
    QCoreApplication::sendEvent(m_box, &comma);
    return true;
  }
  if (!std::ranges::all_of(typed, m_allowed)) {
    Refuse();
    return true;
  }
  const bool full = m_maxLength > 0 && m_box->text().size() >= m_maxLength;
  if (full && (m_options & ClearWhenFull)) {
    m_box->clear();
  } else if (full && !m_box->hasSelectedText()) {
    Refuse();
    return true;
  }
  return false;
}

// What is pasted or dropped; nothing where it is not made of what may be typed.
std::optional<QString> KeyFilter::Read(QString inserted) const {
  if (m_options & PointIsComma) {
    inserted.replace(u'.', u',');
  }
  if (m_options & MarksDropOut) {
    inserted.removeIf([](QChar c) { return QStringView(u" .-").contains(c); });
  }
  return std::ranges::all_of(inserted, m_allowed) ? std::optional(inserted) : std::nullopt;
}

void KeyFilter::Refuse() {
  if (m_options & BeepOnRefusal) {
    Desktop::Current().Beep();
  }
}

}  // namespace framework
