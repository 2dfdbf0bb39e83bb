#include "moving/CsvText.h"

#include "platform/text/Windows1252.h"

#include <QStringDecoder>

#include <optional>

namespace moving {

namespace {

std::optional<QString> Decoded(const QByteArray& bytes, QStringConverter::Encoding encoding) {
  QStringDecoder decoder(encoding);
  QString text = decoder.decode(bytes);
  return decoder.hasError() ? std::nullopt : std::optional(text);
}

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

QString DecodeList(const QByteArray& bytes, const QString& encoding) {
  if (encoding == u"windows-1252") {
    return FromWindows(bytes);
  }
  if (encoding == u"utf-8") {
    return QStringDecoder(QStringConverter::Utf8).decode(bytes);
  }
  // The mark says which bytes come first, and is taken away.
  if (encoding == u"utf-16" || bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
    return QStringDecoder(QStringConverter::Utf16).decode(bytes);
  }
  const auto text = Decoded(bytes, QStringConverter::Utf8);
  return text ? *text : FromWindows(bytes);
}

}  // namespace moving
