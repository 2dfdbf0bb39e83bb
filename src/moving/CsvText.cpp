#include "moving/CsvText.h"

#include "platform/text/Windows1252.h"

#include <QStringDecoder>

namespace moving {

namespace {

QString FromWindows(const QByteArray& bytes) {
  QString text = QString::fromLatin1(bytes);
  for (QChar& each : text) {
    if (each >= QChar(0x80)) {
      each = QChar(texts::windows1252[each.unicode() - 0x80]);
    }
  }
  return text;
}

}  // namespace

QByteArray ListAsUtf8(QByteArray bytes) {
  const QByteArray mark = "\xEF\xBB\xBF";
  if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
    // The mark says which bytes come first, and is taken away.
    return QString(QStringDecoder(QStringConverter::Utf16).decode(bytes)).toUtf8();
  }
  if (!QByteArrayView(bytes).isValidUtf8()) {
    return FromWindows(bytes).toUtf8();
  }
  return bytes.startsWith(mark) ? bytes.remove(0, mark.size()) : bytes;
}

}  // namespace moving
