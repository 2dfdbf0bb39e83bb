#include "letters/editor/Formatting.h"

#include "documents/rtf/ParagraphFormat.h"
#include "letters/editor/ParagraphRange.h"

#include <QTextEdit>
#include <QTextList>

#include <algorithm>

using documents::Twips;

namespace letters {

namespace {

// How far the text of an item with a bullet stands from where it would stand without.
constexpr Twips bulletIndent{360};

double PixelsOf(Twips length) {
  return length.count / rtf::twipsPerPixel;
}

bool HasAttribute(const QTextCharFormat& format, Attribute attribute) {
  switch (attribute) {
    case Attribute::Bold:
      return format.fontWeight() > QFont::Medium;
    case Attribute::Italic:
      return format.fontItalic();
    default:
      return format.underlineStyle() != QTextCharFormat::NoUnderline;
  }
}

QTextCharFormat WithAttribute(Attribute attribute, bool isOn) {
  QTextCharFormat format;
  switch (attribute) {
    case Attribute::Bold:
      format.setFontWeight(isOn ? QFont::Bold : QFont::Normal);
      break;
    case Attribute::Italic:
      format.setFontItalic(isOn);
      break;
    case Attribute::Underline:
      format.setUnderlineStyle(isOn ? QTextCharFormat::SingleUnderline : QTextCharFormat::NoUnderline);
      break;
  }
  return format;
}

bool HasThroughout(const QTextBlock& block, const QTextCursor& selection, Attribute attribute) {
  for (auto at = block.begin(); !at.atEnd(); ++at) {
    const QTextFragment run = at.fragment();
    const bool isSelected =
        run.position() < selection.selectionEnd() && run.position() + run.length() > selection.selectionStart();
    if (isSelected && !HasAttribute(run.charFormat(), attribute)) {
      return false;
    }
  }
  return true;
}

bool IsBulletItem(const QTextBlock& block) {
  const QTextList* list = block.textList();
  const QTextListFormat::Style style = list == nullptr ? QTextListFormat::ListStyleUndefined : list->format().style();
  return style == QTextListFormat::ListDisc || style == QTextListFormat::ListCircle ||
         style == QTextListFormat::ListSquare;
}

void Indent(QTextBlockFormat& format, Twips distance) {
  format.setLeftMargin(std::max(0.0, format.leftMargin() + PixelsOf(distance)));
}

void RemoveFromLists(QTextCursor cursor) {
  cursor.beginEditBlock();
  ForEachParagraph(cursor, [](const QTextBlock& block) {
    if (QTextList* list = block.textList()) {
      list->remove(block);
    }
  });
  ChangeParagraphs(cursor, [](QTextBlockFormat& format) { Indent(format, -bulletIndent); });
  cursor.endEditBlock();
}

void AddBullets(QTextCursor cursor) {
  cursor.beginEditBlock();
  ForEachParagraph(cursor, [](const QTextBlock& block) {
    if (block.textList() == nullptr) {
      QTextBlockFormat format = block.blockFormat();
      Indent(format, bulletIndent);
      QTextCursor(block).setBlockFormat(format);
    }
  });
  QTextListFormat bullets;
  bullets.setStyle(QTextListFormat::ListDisc);
  bullets.setIndent(0);
  cursor.createList(bullets);
  cursor.endEditBlock();
}

}  // namespace

bool Has(const QTextEdit& letter, Attribute attribute) {
  const QTextCursor cursor = letter.textCursor();
  if (!cursor.hasSelection()) {
    return HasAttribute(letter.currentCharFormat(), attribute);
  }
  bool throughout = true;
  ForEachParagraph(
      cursor, [&](const QTextBlock& block) { throughout = throughout && HasThroughout(block, cursor, attribute); });
  return throughout;
}

bool Toggle(QTextEdit& letter, Attribute attribute) {
  const bool isOn = !Has(letter, attribute);
  letter.mergeCurrentCharFormat(WithAttribute(attribute, isOn));
  return isOn;
}

Qt::AlignmentFlag AlignmentOf(const QTextCursor& cursor) {
  const int alignment = int(cursor.blockFormat().alignment() & Qt::AlignHorizontal_Mask);
  for (const Qt::AlignmentFlag flag : {Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify}) {
    if ((alignment & flag) != 0) {
      return flag;
    }
  }
  return Qt::AlignLeft;
}

void Align(QTextEdit& letter, Qt::AlignmentFlag alignment) {
  ChangeParagraphs(letter.textCursor(), [alignment](QTextBlockFormat& format) { format.setAlignment(alignment); });
}

void ToggleBullets(QTextEdit& letter) {
  const QTextCursor cursor = letter.textCursor();
  bool allItems = true;
  ForEachParagraph(cursor, [&allItems](const QTextBlock& block) { allItems = allItems && IsBulletItem(block); });
  if (allItems) {
    RemoveFromLists(cursor);
  } else {
    AddBullets(cursor);
  }
}

void LeaveList(QTextEdit& letter) {
  RemoveFromLists(letter.textCursor());
}

void MoveIndent(QTextEdit& letter, Twips distance) {
  ChangeParagraphs(letter.textCursor(), [distance](QTextBlockFormat& format) { Indent(format, distance); });
}

void SetFontName(QTextEdit& letter, const QString& name) {
  QTextCharFormat format;
  format.setFontFamilies({name});
  letter.mergeCurrentCharFormat(format);
}

void SetFontSize(QTextEdit& letter, double points) {
  QTextCharFormat format;
  format.setFontPointSize(points);
  letter.mergeCurrentCharFormat(format);
}

void SetColour(QTextEdit& letter, const QColor& colour) {
  QTextCharFormat format;
  format.setForeground(colour);
  letter.mergeCurrentCharFormat(format);
}

QString FontName(const QTextEdit& letter) {
  const QStringList names = letter.currentCharFormat().fontFamilies().toStringList();
  return names.isEmpty() ? letter.document()->defaultFont().family() : names.first();
}

double FontSize(const QTextEdit& letter) {
  const double points = letter.currentCharFormat().fontPointSize();
  return points > 0 ? points : letter.document()->defaultFont().pointSizeF();
}

}  // namespace letters
