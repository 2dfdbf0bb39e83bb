#include "moving/CsvText.h"

#include <QStringDecoder>

#include <optional>

namespace moving {

namespace {

// 80 to 9F of Windows-1252, as the WHATWG's encoding standard has them; the rest is Latin 1.
constexpr char16_t windows[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                                0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::optional<QString> Decoded(const QByteArray& bytes, QStringConverter::Encoding encoding) {
  QStringDecoder decoder(encoding);
  QString text = decoder.decode(bytes);
  return decoder.hasError() ? std::nullopt : std::optional(text);
}

QString FromWindows(const QByteArray& bytes) {
  QString text = QString::fromLatin1(bytes);
  for (QChar& each : text) {
    if (each >= QChar(0x80) && each < QChar(0xA0)) {
      each = QChar(windows[each.unicode() - 0x80]);
    }
  }
  return text;
}

}  // namespace

QString DecodeList(const QByteArray& bytes) {
  // The mark says which bytes come first, and is taken away.
  if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
    return QStringDecoder(QStringConverter::Utf16).decode(bytes);
  }
  const auto text = Decoded(bytes, QStringConverter::Utf8);
  return text ? *text : FromWindows(bytes);
}

}  // namespace moving
