#include "documents/rtf/GroupDocument.h"

#include "documents/rtf/Preamble.h"
#include "documents/rtf/Rtf.h"
#include "documents/rtf/Tokenizer.h"
#include "documents/rtf/Writer.h"

#include <QTextDocument>

namespace rtf {

namespace {

std::string_view ViewOf(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// Where the group's text begins: behind its brace and its name.
qsizetype HeadLength(const QByteArray& group) {
  Tokenizer tokenizer(ViewOf(group));
  Token token = tokenizer.Next();
  while (token.kind == TokenKind::GroupStart || token.kind == TokenKind::Symbol) {
    token = tokenizer.Next();
  }
  return static_cast<qsizetype>(token.end);
}

}  // namespace

QList<QByteArray> SplitGroups(const QByteArray& groups) {
  QList<QByteArray> parts;
  Tokenizer tokenizer(ViewOf(groups));
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    if (token.kind == TokenKind::GroupStart) {
      tokenizer.SkipGroup();
      const auto begin = static_cast<qsizetype>(token.begin);
      parts.append(groups.mid(begin, static_cast<qsizetype>(tokenizer.Position()) - begin));
    }
  }
  return parts;
}

QByteArray AsLetter(const QByteArray& contents, const PreambleData& tables) {
  return "{\\rtf1\\ansi\\ansicpg" + QByteArray::number(tables.codePage) + "\\deff" +
         QByteArray::number(tables.defaultFont) + "\\deftab" + QByteArray::number(tables.defaultTab) +
         tables.fontTables + tables.colourTables + tables.listTables + "\\uc1\\pard\\plain " + contents;
}

void ReadGroup(const QByteArray& group, const QTextDocument& letter, QTextDocument& document) {
  Read(AsLetter(group.mid(HeadLength(group)), *PreambleOf(letter).data), document);
}

QByteArray WriteGroup(const QByteArray& group, const QTextDocument& document) {
  QByteArray text;
  Writer writer(document);
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    text += writer.WriteParagraph(block);
  }
  return group.left(HeadLength(group)) + text + '}';
}

}  // namespace rtf
