#pragma once

#include "documents/rtf/Joint.h"
#include "documents/rtf/Rtf.h"
#include "documents/rtf/Writer.h"

#include "documents/rtf/Portrait.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>

#include <memory>

namespace support {

/// `body` behind a header with three fonts (Arial, Symbol, one of charset 238) and two colours (red, blue).
inline QByteArray Letter(const QByteArray& body) {
  return "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang3082{\\fonttbl{\\f0\\fswiss\\fcharset0 "
         "Arial;}{\\f1\\fnil\\fcharset2 "
         "Symbol;}{\\f2\\fswiss\\fcharset238 Arial CE;}{\\f3\\fnil\\fcharset128 MS Gothic;}}\r\n{\\colortbl "
         ";\\red255\\green0\\blue0;\\red0\\green0\\blue255;}\r\n\\viewkind4\\uc1\\pard\\f0\\fs20 " +
         body + "}\r\n";
}

inline std::unique_ptr<QTextDocument> Document(const QByteArray& content) {
  auto document = std::make_unique<QTextDocument>();
  rtf::Read(content, *document);
  return document;
}

/// The text, with what a line of a test can't hold spelled out: object characters as @, line breaks as /, paragraphs
/// separated by |; joints of tables left out.
inline QString Text(const QTextDocument& document) {
  QStringList paragraphs;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    if (rtf::IsJoint(block)) {
      continue;
    }
    QString text = block.text();
    text.replace(QChar::LineSeparator, u'/');
    text.replace(QChar::ObjectReplacementCharacter, u'@');
    paragraphs.append(text);
  }
  return paragraphs.join(u'|');
}

/// The format of the first run whose text contains `text`.
inline QTextCharFormat FormatAt(const QTextDocument& document, const QString& text) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      if (at.fragment().text().contains(text)) {
        return at.fragment().charFormat();
      }
    }
  }
  return {};
}

/// What differs when the document is written and read again; empty for nothing.
inline QString Loss(const QTextDocument& document) {
  return Difference(Portrait(document), Portrait(*Document(rtf::Writer(document).Write())));
}

/// What differs when it is written into what it was read from, and not as a whole; empty for nothing.
inline QString PatchLoss(const QTextDocument& document) {
  return Difference(Portrait(*Document(rtf::Writer(document).Write())), Portrait(*Document(rtf::Write(document))));
}

}  // namespace support
