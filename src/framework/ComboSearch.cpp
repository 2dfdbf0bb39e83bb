#include "framework/ComboSearch.h"

#include "framework/Desktop.h"
#include "platform/text/AsItStands.h"
#include "platform/text/FoldForSearch.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QToolTip>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace framework {
namespace {

constexpr std::chrono::milliseconds pauseThatEndsASearch{1500};

// Small letters without their marks; what is no letter or digit is a blank.
QString Folded(const QString& text) {
  QString folded = texts::FoldForSearch(text);
  std::ranges::replace_if(
      folded, [](QChar c) { return !c.isLetterOrNumber() && !c.isSurrogate(); }, QChar(u' '));
  return folded;
}

// Every word that was typed is the beginning of a word of the item.
bool Matches(const QString& item, const QStringList& words) {
  const QString text = u' ' + Folded(item);
  return !words.isEmpty() &&
         std::ranges::all_of(words, [&](const QString& word) { return text.contains(u' ' + word); });
}

}  // namespace

ComboSearch::ComboSearch(QComboBox* combo) : QObject(combo), m_combo(combo) {
  combo->installEventFilter(this);
}

bool ComboSearch::eventFilter(QObject* watched, QEvent* event) {
  // A list that is being destroyed gets events, too, and must not be asked.
  const QEvent::Type type = event->type();
  if ((type != QEvent::FocusIn && type != QEvent::MouseButtonPress && type != QEvent::KeyPress) ||
      m_combo->isEditable()) {
    return QObject::eventFilter(watched, event);
  }
  switch (type) {
    case QEvent::FocusIn:
    case QEvent::MouseButtonPress:
      // The open list takes the keys itself. It is made when it is first asked for.
      if (watched == m_combo) {
        m_combo->view()->installEventFilter(this);
      }
      m_typed.clear();
      break;
    case QEvent::KeyPress: {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        break;
      }
      if (key->key() == Qt::Key_Backspace) {
        return TakeBack();
      }
      const QString typed = key->text();
      return !typed.isEmpty() && typed[0].isPrint() && OnKey(typed);
    }
    default:
      break;
  }
  return false;
}

// True when the key was taken.
bool ComboSearch::OnKey(const QString& typed) {
  if (m_inOneGo.hasExpired()) {
    m_typed.clear();
  }
  // A blank opens the list unless it stands between two words.
  if (m_typed.isEmpty() && typed == u" "_s) {
    return false;
  }
  m_inOneGo.setRemainingTime(pauseThatEndsASearch);
  const bool again = m_typed.size() == 1 && m_typed == typed;
  const QString text = again ? typed : m_typed + typed;
  const int found = Find(text, Highlighted() + (text.size() == 1 ? 1 : 0));
  if (found < 0) {
    Desktop::Current().Beep();
  } else {
    m_typed = text;
    Select(found);
  }
  ShowTyped();
  return true;
}

bool ComboSearch::TakeBack() {
  if (m_typed.isEmpty() || m_inOneGo.hasExpired()) {
    return false;
  }
  m_typed.chop(1);
  m_inOneGo.setRemainingTime(pauseThatEndsASearch);
  ShowTyped();
  return true;
}

int ComboSearch::Find(const QString& text, int from) const {
  const QStringList words = Folded(text).split(u' ', Qt::SkipEmptyParts);
  const int count = m_combo->count();
  for (int i = 0; i < count; ++i) {
    const int index = (std::max(from, 0) + i) % count;
    if (Matches(m_combo->itemText(index), words)) {
      return index;
    }
  }
  return -1;
}

int ComboSearch::Highlighted() const {
  return m_combo->view()->isVisible() ? m_combo->view()->currentIndex().row() : m_combo->currentIndex();
}

void ComboSearch::Select(int index) {
  if (m_combo->view()->isVisible()) {
    m_combo->view()->setCurrentIndex(m_combo->model()->index(index, m_combo->modelColumn(), m_combo->rootModelIndex()));
    return;
  }
  m_combo->setCurrentIndex(index);
  Q_EMIT m_combo->activated(index);
}

void ComboSearch::ShowTyped() const {
  const QPoint above(0, -2 * m_combo->height());
  QToolTip::showText(m_combo->mapToGlobal(above),
                     m_typed.isEmpty() ? QString() : texts::AsItStands(u"Buscar: "_s + m_typed), m_combo);
}

}  // namespace framework
