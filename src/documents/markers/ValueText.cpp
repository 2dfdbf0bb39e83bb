#include "documents/markers/ValueText.h"

using namespace Qt::StringLiterals;

namespace documents {

namespace {

constexpr QStringView lineBreaks = u"\n\v\f\r\u0085\u2028\u2029";

bool IsLeftOut(QChar c) {
  const char16_t code = c.unicode();
  const bool turnsDirection = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
  const bool isMark = code == QChar::ObjectReplacementCharacter || (code >= 0xFDD0 && code <= 0xFDEF) ||
                      code == 0xFEFF || code >= 0xFFFE;
  return turnsDirection || isMark || c.category() == QChar::Other_Control;
}

}  // namespace

QString ValueText(const QString& stored) {
  QString text;
  text.reserve(stored.size());
  for (qsizetype i = 0; i < stored.size(); ++i) {
    const QChar c = stored[i];
    if (lineBreaks.contains(c)) {
      const bool isPair = c == u'\r' && i + 1 < stored.size() && stored[i + 1] == u'\n';
      text += isPair ? QString() : u"\n"_s;
    } else if (c == u'\t') {
      text += u' ';
    } else if (!IsLeftOut(c)) {
      text += c;
    }
  }
  return text.trimmed();
}

}  // namespace documents
