#include "platform/text/AsItStands.h"

using namespace Qt::StringLiterals;

namespace texts {

QString AsItStands(const QString& text) {
  return u"<span style='white-space:pre-wrap'>"_s + text.toHtmlEscaped() + u"</span>"_s;
}

}  // namespace texts
