#include "moving/CsvText.h"

#include "platform/automation/Error.h"
#include "platform/text/Windows1252.h"

#include <QStringDecoder>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

bool IsAscii(QByteArrayView bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char each) { return static_cast<signed char>(each) >= 0; });
}

// Lists that were put together from several: guessing would spoil the names of one of them.
void RequireOneEncoding(QByteArrayView bytes) {
  std::optional<bool> isUtf8;
  for (qint64 line = 1; !bytes.isEmpty(); ++line) {
    const qsizetype end = bytes.indexOf('\n');
    const QByteArrayView one = end < 0 ? bytes : bytes.first(end);
    bytes = bytes.sliced(end < 0 ? bytes.size() : end + 1);
    if (IsAscii(one)) {
      continue;
    }
    if (isUtf8.value_or(one.isValidUtf8()) != one.isValidUtf8()) {
      throw automation::Error(
          automation::InvalidProcedureCall,
          u"Línea %1 de la lista: sus acentos están escritos de otra manera que los de las líneas de antes (UTF-8 y "
          "Windows-1252). Ábrala en la hoja de cálculo, corrija la línea y guárdela en UTF-8."_s.arg(line));
    }
    isUtf8 = one.isValidUtf8();
  }
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

QByteArray ListAsUtf8(QByteArray bytes, const QString& encoding) {
  const QByteArray mark = "\xEF\xBB\xBF";
  const bool isOpen = encoding.isEmpty();
  // A mark says which bytes come first, and is taken away.
  if (encoding == u"utf-16" || (isOpen && (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")))) {
    return QString(QStringDecoder(QStringConverter::Utf16).decode(bytes)).toUtf8();
  }
  const bool isUtf8 = QByteArrayView(bytes).isValidUtf8();
  if (isOpen && !isUtf8) {
    RequireOneEncoding(bytes);
  }
  if (encoding == u"windows-1252" || (isOpen && !isUtf8)) {
    return FromWindows(bytes).toUtf8();
  }
  if (!isUtf8) {
    bytes = QString::fromUtf8(bytes).toUtf8();
  }
  return bytes.startsWith(mark) ? bytes.remove(0, mark.size()) : bytes;
}

}  // namespace moving
