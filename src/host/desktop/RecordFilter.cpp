#include "host/desktop/RecordFilter.h"

#include <algorithm>

namespace host {

namespace {

bool IsAscii(const QString& text) {
  return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

}  // namespace

QString FoldForSearch(const QString& text) {
  if (IsAscii(text)) {
    return text.toLower();
  }
  QString folded = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
  folded.removeIf([](QChar c) { return c.isMark(); });
  return folded;
}

RecordFilter::RecordFilter(const QString& typed) : m_words(FoldForSearch(typed).simplified().split(u' ')) {
  m_words.removeAll(QString());
}

bool RecordFilter::Accepts(QStringView folded) const {
  return std::all_of(m_words.cbegin(), m_words.cend(), [folded](const QString& word) { return folded.contains(word); });
}

}  // namespace host
