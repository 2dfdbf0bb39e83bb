#include "host/records/RecordFilter.h"

#include "platform/text/FoldForSearch.h"

#include <algorithm>

namespace host {

RecordFilter::RecordFilter(const QString& typed) : m_words(texts::FoldForSearch(typed).simplified().split(u' ')) {
  m_words.removeAll(QString());
}

bool RecordFilter::Accepts(QStringView folded) const {
  return std::all_of(m_words.cbegin(), m_words.cend(), [folded](const QString& word) { return folded.contains(word); });
}

}  // namespace host
