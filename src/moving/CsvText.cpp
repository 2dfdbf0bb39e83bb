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

QByteArray ListAsUtf8(QByteArray bytes, const QString& encoding) {
  const QByteArray mark = "\xEF\xBB\xBF";
  const bool isOpen = encoding.isEmpty();
  // A mark says which bytes come first, and is taken away.
  if (encoding == u"utf-16" || (isOpen && (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")))) {
    return QString(QStringDecoder(QStringConverter::Utf16).decode(bytes)).toUtf8();
  }
  const bool isUtf8 = QByteArrayView(bytes).isValidUtf8();
  if (encoding == u"windows-1252" || (isOpen && !isUtf8)) {
    return FromWindows(bytes).toUtf8();
  }
  if (!isUtf8) {
    bytes = QString::fromUtf8(bytes).toUtf8();
  }
  return bytes.startsWith(mark) ? bytes.remove(0, mark.size()) : bytes;
}

}  // namespace moving
