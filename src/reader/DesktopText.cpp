#include "reader/DesktopText.h"

#include <QString>

namespace reader {

namespace {

char16_t At(QByteArrayView bytes, qsizetype i) {
  return char16_t(quint8(bytes[i]) | (quint8(bytes[i + 1]) << 8));
}

QString Expanded(QByteArrayView bytes) {
  QString text;
  bool isOneByte = true;
  for (qsizetype i = 0; i < bytes.size();) {
    if (bytes[i] == '\0') {
      isOneByte = !isOneByte;
      ++i;
    } else if (isOneByte) {
      text.append(QChar(char16_t(quint8(bytes[i++]))));
    } else if (i + 1 < bytes.size()) {
      text.append(QChar(At(bytes, i)));
      i += 2;
    } else {
      break;
    }
  }
  return text;
}

}  // namespace

QByteArray DecodeText(QByteArrayView stored) {
  QString text;
  if (stored.startsWith("\xFF\xFE")) {
    text = Expanded(stored.sliced(2));
  } else {
    for (qsizetype i = 0; i + 1 < stored.size(); i += 2) {
      text.append(QChar(At(stored, i)));
    }
  }
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
      ++i;
    } else if (text.at(i).isSurrogate()) {
      text[i] = QChar::ReplacementCharacter;
    }
  }
  return text.toUtf8();
}

}  // namespace reader
