#include "documents/rtf/Rtf.h"

#include "documents/rtf/CodePages.h"
#include "documents/rtf/FittedTabs.h"
#include "documents/rtf/Numbering.h"
#include "documents/rtf/Reader.h"
#include "documents/rtf/Source.h"
#include "documents/rtf/TablePath.h"
#include "documents/rtf/Writer.h"

#include <QPointer>
#include <QStringDecoder>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextList>
#include <QTextTable>

#include <algorithm>
#include <string_view>

namespace rtf {

namespace {

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

Report Refused(const QString& reason) {
  return {.outcome = Outcome::Refused, .reason = reason, .carried = {}, .dropped = {}};
}

/// Plain text as RTF in the document's font, so that it is read like any other letter.
QByteArray RtfOf(QString text, const QFont& font) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(u'\r', u'\n');
  for (QChar& c : text) {
    const char16_t code = c.unicode();
    if (code < 0x20 && code != u'\t' && code != u'\n') {
      c = u' ';
    } else if (code == QChar::ObjectReplacementCharacter || code == 0xFDD0 || code == 0xFDD1) {
      c = QChar::ReplacementCharacter;
    }
  }
  QTextDocument plain;
  plain.setUndoRedoEnabled(false);
  plain.setDefaultFont(font);
  QTextCursor(&plain).insertText(text);
  return Writer(plain).Write();
}

/// Reads `bytes`; `characters` is the text that they stand for, if that was characters and no RTF. `seams` become
/// those of `bytes`.
Report ReadInto(const QByteArray& bytes, const QString& characters, QTextDocument& document, const Limits& limits,
                Seams& seams) {
  Source& source = Source::Of(document);
  source.Forget();
  document.clear();
  if (bytes.size() > limits.bytes || characters.size() > limits.bytes) {
    return Refused(QStringLiteral("La carta ocupa más de %1 MB.").arg(limits.bytes / (1024 * 1024)));
  }
  Report report;
  if (const std::string_view input = RtfIn(bytes); !input.empty()) {
    Reader reader(input, document, source, limits);
    report = reader.Read();
    seams = reader.TakeSeams(bytes.size() - static_cast<qsizetype>(input.size()));
  } else {
    const QByteArray rich = RtfOf(characters.isNull() ? PlainText(bytes) : characters, document.defaultFont());
    report = Reader(RtfIn(rich), document, source, limits).Read();
    if (report.outcome == Outcome::RichText) {
      report.outcome = Outcome::PlainText;
    }
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

QByteArray BytesOf(const Source& source) {
  return source.Characters().isEmpty() ? source.Bytes() : BytesOf(source.Characters());
}

/// What is carried byte for byte may hold bytes that no text column takes: binary data is written as digits, which
/// mean the same.
QByteArray WithoutBinary(const QByteArray& bytes) {
  if (!bytes.contains('\0')) {
    return bytes;
  }
  QByteArray result;
  const std::string_view input{bytes.constData(), static_cast<std::size_t>(bytes.size())};
  Tokenizer tokenizer(input);
  std::size_t done = 0;
  for (TokenKind kind = TokenKind::Text; kind != TokenKind::End;) {
    const Token token = tokenizer.Next();
    kind = token.kind;
    // What stands between tokens ends words.
    result += bytes.mid(static_cast<qsizetype>(done), static_cast<qsizetype>(token.begin - done)).replace('\0', '\n');
    const bool isNul = kind == TokenKind::Symbol && token.byte == 0;
    const std::string_view raw = kind == TokenKind::Binary ? token.text
                                 : isNul                   ? "\n"
                                                           : input.substr(token.begin, token.end - token.begin);
    const QByteArray part(raw.data(), static_cast<qsizetype>(raw.size()));
    result += kind == TokenKind::Binary ? ' ' + part.toHex() : part;
    done = token.end;
  }
  return result;
}

/// What the numbers in a selection refer to.
PreambleData TablesOf(const PreambleData& whole) {
  PreambleData tables;
  tables.codePage = whole.codePage;
  tables.defaultFont = whole.defaultFont;
  tables.fontTables = whole.fontTables;
  tables.colourTables = whole.colourTables;
  tables.listTables = whole.listTables;
  return tables;
}

/// Takes from a pasted document what refers to tables and sections that the target does not have.
void Detach(QTextDocument& pasted, QTextDocument& target) {
  const bool sameLists = PreambleOf(pasted).data->listTables == PreambleOf(target).data->listTables;
  for (QTextBlock block = pasted.begin(); block.isValid(); block = block.next()) {
    QTextBlockFormat format = block.blockFormat();
    if (format.hasProperty(SectionWordsProperty)) {
      format.clearProperty(SectionWordsProperty);
      format.clearProperty(SectionNameProperty);
      format.clearProperty(SectionProperty);
      QTextCursor(block).setBlockFormat(format);
    }
    QTextList* list = sameLists ? nullptr : block.textList();
    if (list != nullptr && IsOfListTable(list->format())) {
      QTextListFormat own = list->format();
      own.clearProperty(ListSourceProperty);
      list->setFormat(own);
    }
  }
}

int TablesAround(const QTextCursor& cursor) {
  int count = 0;
  for (const QTextFrame* frame = cursor.currentFrame(); frame != nullptr; frame = frame->parentFrame()) {
    count += qobject_cast<const QTextTable*>(frame) == nullptr ? 0 : 1;
  }
  return count;
}

/// The document, or what is in the one cell that it is.
QTextDocumentFragment FragmentOf(QTextDocument& pasted) {
  const QList<QTextFrame*> frames = pasted.rootFrame()->childFrames();
  const auto* table = frames.size() == 1 ? qobject_cast<const QTextTable*>(frames.first()) : nullptr;
  const bool isCell = table != nullptr && table->rows() == 1 && table->columns() == 1 && table->firstPosition() == 1 &&
                      table->lastPosition() + 2 == pasted.characterCount();
  if (!isCell) {
    return QTextDocumentFragment(&pasted);
  }
  QTextCursor inside(&pasted);
  inside.setPosition(table->firstPosition());
  inside.setPosition(table->lastPosition(), QTextCursor::KeepAnchor);
  return QTextDocumentFragment(inside);
}

/// Whether their items can be those of one list of numbers.
bool AreAlike(const QTextListFormat& one, const QTextListFormat& other) {
  const auto source = [](const QTextListFormat& format) {
    return IsOfListTable(format) ? format.stringProperty(ListSourceProperty) : QString();
  };
  return KindOf(one.style()) != Numbering::Kind::Bullet && NumberingOf(one) == NumberingOf(other) &&
         source(one) == source(other);
}

using Lists = QList<QPointer<QTextList>>;

/// Those that a paste comes to stand among.
Lists ListsAround(const QTextCursor& cursor) {
  const QTextBlock start = cursor.document()->findBlock(cursor.selectionStart());
  const QTextBlock end = cursor.document()->findBlock(cursor.selectionEnd());
  Lists lists;
  for (const QTextBlock& block : {start, start.previous(), end, end.next()}) {
    if (block.isValid() && QTextCursor(block).currentFrame() == cursor.currentFrame()) {
      lists.append(block.textList());
    }
  }
  return lists;
}

/// Numbers that were pasted go on from those around them.
void JoinLists(const QTextDocument& document, int begin, int end, const Lists& around) {
  for (QTextBlock block = document.findBlock(begin); block.isValid() && block.position() <= end; block = block.next()) {
    QTextList* pasted = block.textList();
    if (pasted == nullptr || around.contains(pasted)) {
      continue;
    }
    const auto home = std::find_if(around.begin(), around.end(), [pasted](const QPointer<QTextList>& list) {
      return list != nullptr && AreAlike(pasted->format(), list->format());
    });
    // It goes with its last item.
    for (int left = home == around.end() ? 0 : pasted->count(); left > 0; --left) {
      (*home)->add(pasted->item(0));
    }
  }
}

/// Qt puts an empty paragraph in front of items, and leaves the first paragraph's mark out.
void MendStart(QTextDocument& copy, const QTextCursor& selection) {
  const QTextBlock first = selection.document()->findBlock(selection.selectionStart());
  const QTextBlock last = selection.document()->findBlock(selection.selectionEnd());
  const QTextBlock begin = copy.begin();
  if (copy.blockCount() == last.blockNumber() - first.blockNumber() + 2 && begin.length() == 1 &&
      begin.next().textList() != nullptr) {
    QTextCursor(&copy).deleteChar();
  }
  if (QTextCursor(first).currentTable() == nullptr && QTextCursor(&copy).currentTable() == nullptr) {
    QTextCursor(&copy).setBlockCharFormat(first.charFormat());
  }
}

bool IsLatin1(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xFF; });
}

}  // namespace

Report Read(const QByteArray& content, QTextDocument& document, const Limits& limits) {
  Seams seams;
  const Report report = ReadInto(content, {}, document, limits, seams);
  if (report.outcome != Outcome::Refused) {
    Source::Of(document).Remember(document, content, {}, seams);
  }
  return report;
}

Report Read(const QString& content, QTextDocument& document, const Limits& limits, int textWidth) {
  Seams seams;
  if (content.size() > limits.bytes) {
    return ReadInto({}, content, document, limits, seams);
  }
  const QByteArray bytes = BytesOf(content);
  const Report report = ReadInto(bytes, content.isNull() ? QStringLiteral("") : content, document, limits, seams);
  if (report.outcome != Outcome::Refused) {
    if (textWidth > 0) {
      FitTabs(document, textWidth);
    }
    const bool plainBytes = IsLatin1(content);
    Source::Of(document).Remember(document, plainBytes ? bytes : QByteArray(), plainBytes ? QString() : content, seams);
  }
  return report;
}

QByteArray Write(const QTextDocument& document) {
  if (const Source* source = Source::Find(document)) {
    if (const auto unchanged = source->UnchangedBytes(document)) {
      return *unchanged;
    }
    if (const auto patched = source->Patched(document, BytesOf(*source))) {
      return *patched;
    }
  }
  return Writer(document).Write();
}

QString WriteText(const QTextDocument& document) {
  if (const Source* source = Source::Find(document)) {
    if (const auto unchanged = source->UnchangedCharacters(document)) {
      return *unchanged;
    }
    if (const auto patched = source->Patched(document, BytesOf(*source))) {
      return QString::fromLatin1(WithoutBinary(*patched));
    }
  }
  return QString::fromLatin1(WithoutBinary(Writer(document).Write()));
}

QByteArray WriteSelection(const QTextCursor& cursor) {
  if (!cursor.hasSelection()) {
    return {};
  }
  QTextDocument selection;
  selection.setUndoRedoEnabled(false);
  selection.setDefaultFont(cursor.document()->defaultFont());
  QTextCursor(&selection).insertFragment(cursor.selection());
  MendStart(selection, cursor);
  MoveToCell(selection, {});
  SetPreamble(selection, TablesOf(*PreambleOf(*cursor.document()).data));
  return Writer(selection).Write();
}

Report Insert(const QByteArray& content, QTextCursor& cursor, const Limits& limits) {
  const TablePath cell = PathOf(cursor.blockFormat());
  Limits here = limits;
  here.tableLevels = cell.isEmpty() ? std::max(0, limits.tableLevels - TablesAround(cursor)) : 0;
  QTextDocument pasted;
  Report report = Read(content, pasted, here);
  if (report.outcome == Outcome::Refused) {
    return report;
  }
  QTextDocument& target = *cursor.document();
  Detach(pasted, target);
  Source::Of(target).AddPictures(Source::Of(pasted));
  const int begin = cursor.selectionStart();
  const Lists around = ListsAround(cursor);
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  MoveToCell(pasted, cell);
  cursor.insertFragment(FragmentOf(pasted));
  JoinLists(target, begin, cursor.position(), around);
  cursor.endEditBlock();
  return report;
}

}  // namespace rtf
