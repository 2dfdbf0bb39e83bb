#include "framework/PasteGuard.h"

#include "framework/Desktop.h"

#include <QLineEdit>

#include <algorithm>
#include <utility>

namespace framework {

PasteGuard::PasteGuard(QLineEdit* box, Reader read, int maxLength)
    : QObject(box), m_box(box), m_read(std::move(read)), m_maxLength(maxLength), m_before(box->text()) {
  connect(box, &QLineEdit::textEdited, this, &PasteGuard::OnEdited);
  // The box's own text: what the signal carries was taken before a listener of textEdited changed it.
  connect(box, &QLineEdit::textChanged, this, [this] { m_before = m_box->text(); });
}

// Only what is new is judged: what was stored may be anything, and can be edited.
void PasteGuard::OnEdited(const QString& text) {
  if (m_keyUnderWay) {
    return;
  }
  const auto [start, startBefore] = std::ranges::mismatch(text, m_before);
  const qsizetype prefix = start - text.begin();
  qsizetype suffix = 0;
  const qsizetype mostInCommon = std::min(text.size(), m_before.size()) - prefix;
  while (suffix < mostInCommon && text[text.size() - 1 - suffix] == m_before[m_before.size() - 1 - suffix]) {
    ++suffix;
  }
  const QString inserted = text.mid(prefix, text.size() - prefix - suffix);
  if (inserted.isEmpty()) {
    return;
  }
  std::optional<QString> kept = m_read(inserted);
  if (!kept) {
    kept = m_read(inserted.trimmed());
  }
  const qsizetype length = prefix + suffix + kept.value_or(QString()).size();
  if (!kept || kept->isEmpty() || (m_maxLength > 0 && length > m_maxLength)) {
    Desktop::Current().Beep();
    Put(m_before, prefix);
  } else if (*kept != inserted) {
    Put(text.left(prefix) + *kept + text.right(suffix), prefix + kept->size());
  }
}

void PasteGuard::Put(const QString& text, qsizetype caret) {
  m_box->setText(text);
  m_box->setCursorPosition(static_cast<int>(caret));
  // The user has been at it, whatever came of it.
  m_box->setModified(true);
}

}  // namespace framework
