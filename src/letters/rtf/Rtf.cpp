#include "letters/rtf/Rtf.h"

#include "letters/rtf/CodePages.h"
#include "letters/rtf/Reader.h"
#include "letters/rtf/Source.h"

#include <QStringDecoder>
#include <QTextCursor>
#include <QTextDocument>

#include <string_view>

namespace rtf {

namespace {

/// Behind blanks and the mark of a UTF-8 file.
std::string_view RtfIn(const QByteArray& content) {
  std::string_view view(content.constData(), static_cast<std::size_t>(content.size()));
  if (view.substr(0, 3) == "\xEF\xBB\xBF") {
    view.remove_prefix(3);
  }
  view.remove_prefix(std::min(view.find_first_not_of(" \t\r\n"), view.size()));
  return view.substr(0, 5) == "{\\rtf" ? view : std::string_view();
}

QString PlainText(const QByteArray& content) {
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString text = utf8.decode(content);
  if (!utf8.hasError()) {
    return text;
  }
  text.clear();
  for (const QByteArray& line : content.split('\n')) {
    if (!text.isEmpty()) {
      text += u'\n';
    }
    Decode(text, {line.constData(), static_cast<std::size_t>(line.size())}, westernCodePage);
  }
  return text;
}

Report Refused(const QString& reason) { return {.outcome = Outcome::Refused, .reason = reason, .carried = {}, .dropped = {}}; }

Report ReadPlain(QString text, QTextDocument& document, const Limits& limits) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(u'\r', u'\n');
  for (QChar& c : text) {
    const char16_t code = c.unicode();
    const bool control = code < 0x20 && code != u'\t' && code != u'\n';
    if (control || code == QChar::ObjectReplacementCharacter || code == 0xFDD0 || code == 0xFDD1) {
      c = control ? QChar(u' ') : QChar(QChar::ReplacementCharacter);
    }
  }
  if (text.count(u'\n') + text.count(QChar::ParagraphSeparator) >= limits.paragraphs) {
    return Refused(QStringLiteral("La carta tiene más de %1 párrafos.").arg(limits.paragraphs));
  }
  const bool undo = document.isUndoRedoEnabled();
  document.setUndoRedoEnabled(false);
  QTextCursor(&document).insertText(text);
  document.setUndoRedoEnabled(undo);
  document.setModified(false);
  return {.outcome = Outcome::PlainText, .reason = {}, .carried = {}, .dropped = {}};
}

/// Reads `bytes`; `characters` is the text that they stand for, if that was characters and no RTF.
Report ReadInto(const QByteArray& bytes, const QString& characters, QTextDocument& document, const Limits& limits) {
  Source& source = Source::Of(document);
  source.Forget();
  document.clear();
  if (bytes.size() > limits.bytes || characters.size() > limits.bytes) {
    return Refused(QStringLiteral("La carta ocupa más de %1 MB.").arg(limits.bytes / (1024 * 1024)));
  }
  Report report;
  if (const std::string_view input = RtfIn(bytes); !input.empty()) {
    report = Reader(input, document, source, limits).Read();
  } else {
    report = ReadPlain(characters.isNull() ? PlainText(bytes) : characters, document, limits);
  }
  if (report.outcome == Outcome::Refused) {
    document.clear();
    source.Forget();
  }
  return report;
}

/// The bytes that a column's characters stand for. A character that is no byte becomes a group of its own with a
/// Unicode escape, so that it counts as one character wherever it stands.
QByteArray BytesOf(const QString& characters) {
  QByteArray bytes;
  bytes.reserve(characters.size());
  for (const QChar c : characters) {
    if (c.unicode() <= 0xFF) {
      bytes += static_cast<char>(c.unicode());
    } else if (c.unicode() != 0xFEFF) {
      bytes += "{\\uc1\\u" + QByteArray::number(static_cast<qint16>(c.unicode())) + "?}";
    }
  }
  return bytes;
}

bool IsLatin1(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xFF; });
}

}  // namespace

Report Read(const QByteArray& content, QTextDocument& document, const Limits& limits) {
  const Report report = ReadInto(content, {}, document, limits);
  if (report.outcome != Outcome::Refused) {
    Source::Of(document).Remember(document, content, {});
  }
  return report;
}

Report Read(const QString& content, QTextDocument& document, const Limits& limits) {
  if (content.size() > limits.bytes) {
    return ReadInto({}, content, document, limits);
  }
  const QByteArray bytes = BytesOf(content);
  const Report report = ReadInto(bytes, content.isNull() ? QStringLiteral("") : content, document, limits);
  if (report.outcome != Outcome::Refused) {
    const bool plainBytes = IsLatin1(content);
    Source::Of(document).Remember(document, plainBytes ? bytes : QByteArray(), plainBytes ? QString() : content);
  }
  return report;
}

}  // namespace rtf
