#include "database/dialect/SqlText.h"

namespace database {

SqlText SqlText::Parameter(const Binding& binding) {
  SqlText piece;
  piece.m_places.push_back({0, binding});
  return piece;
}

SqlText SqlText::Filled(QStringView form, std::span<const SqlText> pieces) {
  SqlText filled;
  for (qsizetype i = 0; i < form.size(); ++i) {
    if (form[i] != u'%') {
      filled.m_text += form[i];
      continue;
    }
    const QChar which = form[++i];
    filled += which == u'*' ? Joined(pieces, u", ") : pieces[static_cast<std::size_t>(which.digitValue() - 1)];
  }
  return filled;
}

SqlText SqlText::Joined(std::span<const SqlText> pieces, QStringView between) {
  SqlText joined;
  for (const SqlText& piece : pieces) {
    if (&piece != &pieces.front()) {
      joined.m_text += between;
    }
    joined += piece;
  }
  return joined;
}

SqlText& SqlText::operator+=(const SqlText& next) {
  const qsizetype shift = m_text.size();
  m_text += next.m_text;
  for (const Place& place : next.m_places) {
    m_places.push_back({place.position + shift, place.binding});
  }
  return *this;
}

SqlText& SqlText::operator+=(QStringView next) {
  m_text += next;
  return *this;
}

}  // namespace database
