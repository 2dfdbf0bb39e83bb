// Any letter under any edits: what is written afterwards has the document's text and reads as when all of it is
// written anew, undoing everything brings the original bytes back, and a selection can be pasted.

#include "documents/rtf/Portrait.h"
#include "documents/rtf/Rtf.h"
#include "documents/rtf/Writer.h"
#include "documents/rtf/fuzz/FuzzRun.h"
#include "documents/rtf/fuzz/Spelled.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

namespace {

constexpr qsizetype edits = 8;
constexpr qsizetype bytesPerEdit = 4;

void Edit(QTextDocument& document, const QByteArray& bytes) {
  const auto number = [&](int i) { return static_cast<unsigned char>(bytes[i]); };
  const int length = document.characterCount();
  QTextCursor cursor(&document);
  // Nobody comes between the halves of a character.
  const auto whole = [&](int position) { return position + (document.characterAt(position).isLowSurrogate() ? 1 : 0); };
  cursor.setPosition(whole(number(1) * length / 256));
  cursor.setPosition(whole(qMin(cursor.position() + number(2) / 8, length - 1)), QTextCursor::KeepAnchor);
  QTextCharFormat characters;
  QTextBlockFormat paragraph;
  switch (number(0) % 10) {
    case 0:
      cursor.insertText(QStringLiteral("Ñandú {\\} €").left(number(3) % 12));
      break;
    case 1:
      cursor.removeSelectedText();
      break;
    case 2:
      characters.setFontWeight(number(3) % 2 == 0 ? QFont::Bold : QFont::Normal);
      cursor.mergeCharFormat(characters);
      break;
    case 3:
      characters.setFontFamilies({number(3) % 2 == 0 ? QStringLiteral("Arial") : QStringLiteral("Symbol")});
      characters.setForeground(QColor::fromRgb(number(3), 0, 0));
      cursor.mergeCharFormat(characters);
      break;
    case 4:
      cursor.insertBlock();
      break;
    case 5:
      paragraph.setLeftMargin(number(3));
      paragraph.setAlignment(Qt::AlignRight);
      cursor.mergeBlockFormat(paragraph);
      break;
    case 6:
      cursor.createList(number(3) % 2 == 0 ? QTextListFormat::ListDisc : QTextListFormat::ListLowerRoman);
      break;
    case 7:
      characters.setAnchor(true);
      characters.setAnchorHref(QStringLiteral("https://ejemplo.es/\\\"}"));
      cursor.mergeCharFormat(characters);
      break;
    case 8:
      rtf::Insert(rtf::WriteSelection(cursor), cursor);
      break;
    default:
      document.undo();
  }
}

}  // namespace

void FuzzOne(const QByteArray& input) {
  if (input.size() < edits * bytesPerEdit) {
    return;
  }
  const QByteArray rest = input.mid(edits * bytesPerEdit);
  const QByteArray letter = rest.startsWith("{\\rtf") ? rest : Spelled(rest);
  QTextDocument document;
  if (rtf::Read(letter, document).outcome == rtf::Outcome::Refused) {
    return;
  }
  for (qsizetype i = 0; i < edits; ++i) {
    Edit(document, input.mid(i * bytesPerEdit, bytesPerEdit));
  }
  QTextDocument again;
  const QByteArray written = rtf::Write(document);
  rtf::Read(written, again);
  // Cells that lost their paragraphs come back as empty ones.
  const QByteArray text = document.toPlainText().simplified().toUtf8();
  const QByteArray textAgain = again.toPlainText().simplified().toUtf8();
  Expect(text == textAgain, "other text after edits", text + "\n---\n" + textAgain + "\n---\n" + written);
  QTextDocument anew;
  rtf::Read(rtf::Writer(document).Write(), anew);
  const QString difference = support::Difference(support::Portrait(anew), support::Portrait(again));
  Expect(difference.isEmpty(), "written between what is kept it reads otherwise",
         difference.toUtf8() + "\n---\n" + written);
  while (document.isUndoAvailable()) {
    document.undo();
  }
  Expect(rtf::Write(document) == letter, "undone, but other bytes");
}
