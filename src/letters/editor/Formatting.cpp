#include "letters/editor/Formatting.h"

#include "documents/rtf/Joint.h"
#include "documents/rtf/ParagraphFormat.h"
#include "letters/editor/ParagraphRange.h"

#include <QTextEdit>
#include <QTextList>

#include <algorithm>
#include <cmath>

using documents::Twips;

namespace letters {

namespace {

// How far the text of an item stands from where it would stand without its mark. Numbers of two digits find room.
constexpr Twips bulletIndent{360};
constexpr Twips numberIndent{720};
constexpr double twipsPerPoint = 20;
constexpr double leastPoints = 0.02;  // Less than a twip.
constexpr double single = 100;        // A single line in percent.

bool HasAttribute(const QTextCharFormat& format, Attribute attribute) {
  switch (attribute) {
    case Attribute::Bold:
      return format.fontWeight() > QFont::Medium;
    case Attribute::Italic:
      return format.fontItalic();
    case Attribute::Underline:
      return format.underlineStyle() != QTextCharFormat::NoUnderline;
    case Attribute::StrikeOut:
      return format.fontStrikeOut();
    case Attribute::Raised:
      return format.verticalAlignment() == QTextCharFormat::AlignSuperScript;
    case Attribute::Lowered:
      return format.verticalAlignment() == QTextCharFormat::AlignSubScript;
    case Attribute::Highlight:
      return format.background().style() != Qt::NoBrush;
  }
  return false;
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
    case Attribute::StrikeOut:
      format.setFontStrikeOut(isOn);
      break;
    case Attribute::Raised:
      format.setVerticalAlignment(isOn ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignNormal);
      break;
    case Attribute::Lowered:
      format.setVerticalAlignment(isOn ? QTextCharFormat::AlignSubScript : QTextCharFormat::AlignNormal);
      break;
    case Attribute::Highlight:
      format.setBackground(isOn ? QBrush(Qt::yellow) : QBrush(Qt::NoBrush));
      break;
  }
  return format;
}

// Whether every selected run is so, or, where there is none, what is typed next.
template <std::predicate<const QTextCharFormat&> Is>
bool IsThroughout(const QTextEdit& letter, Is is) {
  const QTextCursor cursor = letter.textCursor();
  if (!cursor.hasSelection()) {
    return is(letter.currentCharFormat());
  }
  bool anyRun = false;
  bool throughout = true;
  const QList<TextRange> ranges = SelectedRanges(cursor);
  for (const TextRange range : ranges) {
    ForEachParagraph(*letter.document(), range, [&](const QTextBlock& block) {
      for (auto at = block.begin(); throughout && !at.atEnd(); ++at) {
        const QTextFragment run = at.fragment();
        if (run.position() < range.end && run.position() + run.length() > range.start) {
          anyRun = true;
          throughout = is(run.charFormat());
        }
      }
    });
  }
  return anyRun ? throughout : is(letter.currentCharFormat());
}

// Nothing where all of it is so: several events of one choice are one step of undo.
void SetThroughout(QTextEdit& letter, const QTextCharFormat& format) {
  const auto hasIt = [&](QTextCharFormat run) {
    const QTextCharFormat before = run;
    run.merge(format);
    return run == before;
  };
  if (!IsThroughout(letter, hasIt)) {
    letter.mergeCurrentCharFormat(format);
  }
}

bool IsItem(const QTextBlock& block, ListKind kind) {
  const QTextList* list = block.textList();
  const QTextListFormat::Style style = list == nullptr ? QTextListFormat::ListStyleUndefined : list->format().style();
  // Styles of numbers stand below those of bullets.
  return kind == ListKind::Bullets ? style <= QTextListFormat::ListDisc && style >= QTextListFormat::ListSquare
                                   : style <= QTextListFormat::ListDecimal;
}

// What can be items. A table's joint, which shows nothing, is none among others.
QList<QTextBlock> Paragraphs(const QTextCursor& cursor) {
  QList<QTextBlock> all;
  ForEachParagraph(cursor, [&all](const QTextBlock& block) { all.append(block); });
  if (all.size() > 1) {
    all.removeIf(rtf::IsJoint);
  }
  return all;
}

// A list of numbers that ends where those begin, or begins where they end.
QTextList* NumbersBeside(const QList<QTextBlock>& paragraphs) {
  for (const QTextBlock& block : {paragraphs.first().previous(), paragraphs.last().next()}) {
    if (block.isValid() && IsItem(block, ListKind::Numbers)) {
      return block.textList();
    }
  }
  return nullptr;
}

void Indent(QTextBlockFormat& format, Twips distance) {
  format.setLeftMargin(std::max(0.0, format.leftMargin() + distance.count / rtf::twipsPerIndent));
}

Twips IndentOf(ListKind kind) {
  return kind == ListKind::Numbers ? numberIndent : bulletIndent;
}

Twips ItemIndent(const QTextBlock& block) {
  if (block.textList() == nullptr) {
    return {};
  }
  return IndentOf(IsItem(block, ListKind::Numbers) ? ListKind::Numbers : ListKind::Bullets);
}

void MoveBlock(const QTextBlock& block, Twips distance) {
  QTextBlockFormat format = block.blockFormat();
  Indent(format, distance);
  if (format != block.blockFormat()) {
    QTextCursor(block).setBlockFormat(format);
  }
}

void RemoveFromLists(QTextCursor cursor) {
  cursor.beginEditBlock();
  ForEachParagraph(cursor, [](const QTextBlock& block) {
    const Twips indent = ItemIndent(block);
    if (QTextList* list = block.textList()) {
      list->remove(block);
      MoveBlock(block, -indent);
    }
  });
  cursor.endEditBlock();
}

void MakeItems(QTextCursor cursor, ListKind kind) {
  const QList<QTextBlock> paragraphs = Paragraphs(cursor);
  if (paragraphs.isEmpty()) {
    return;
  }
  cursor.beginEditBlock();
  for (const QTextBlock& block : paragraphs) {
    MoveBlock(block, IndentOf(kind) - ItemIndent(block));
  }
  QTextList* list = kind == ListKind::Numbers ? NumbersBeside(paragraphs) : nullptr;
  if (list == nullptr) {
    QTextListFormat format;
    format.setStyle(kind == ListKind::Numbers ? QTextListFormat::ListDecimal : QTextListFormat::ListDisc);
    format.setIndent(0);
    list = QTextCursor(paragraphs.first()).createList(format);
  }
  for (const QTextBlock& block : paragraphs) {
    list->add(block);
  }
  cursor.endEditBlock();
}

}  // namespace

bool Has(const QTextEdit& letter, Attribute attribute) {
  return IsThroughout(letter, [attribute](const QTextCharFormat& format) { return HasAttribute(format, attribute); });
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

void ToggleList(QTextEdit& letter, ListKind kind) {
  const QTextCursor cursor = letter.textCursor();
  const QList<QTextBlock> paragraphs = Paragraphs(cursor);
  if (std::all_of(paragraphs.begin(), paragraphs.end(),
                  [kind](const QTextBlock& block) { return IsItem(block, kind); })) {
    RemoveFromLists(cursor);
  } else {
    MakeItems(cursor, kind);
  }
}

void LeaveList(QTextEdit& letter) {
  RemoveFromLists(letter.textCursor());
}

void MoveIndent(QTextEdit& letter, Twips distance) {
  ChangeParagraphs(letter.textCursor(), [distance](QTextBlockFormat& format) { Indent(format, distance); });
}

Spacing SpacingOf(const QTextCursor& cursor) {
  const QTextBlockFormat format = cursor.blockFormat();
  const auto points = [](double pixels) { return pixels * rtf::twipsPerPixel / twipsPerPoint; };
  Spacing spacing{.lines = std::nullopt, .before = points(format.topMargin()), .after = points(format.bottomMargin())};
  if (format.lineHeightType() == QTextBlockFormat::ProportionalHeight) {
    spacing.lines = format.lineHeight() / single;
  } else if (format.lineHeightType() == QTextBlockFormat::SingleHeight) {
    spacing.lines = 1;
  }
  return spacing;
}

void ChangeSpacing(QTextEdit& letter, const Spacing& before, const Spacing& after) {
  const auto pixels = [](double points) { return points * twipsPerPoint / rtf::twipsPerPixel; };
  ChangeParagraphs(letter.textCursor(), [&](QTextBlockFormat& format) {
    if (after.lines && after.lines != before.lines) {
      format.setLineHeight(*after.lines * single, QTextBlockFormat::ProportionalHeight);
    }
    if (std::abs(after.before - before.before) >= leastPoints) {
      format.setTopMargin(pixels(after.before));
    }
    if (std::abs(after.after - before.after) >= leastPoints) {
      format.setBottomMargin(pixels(after.after));
    }
  });
}

void SetFontName(QTextEdit& letter, const QString& name) {
  QTextCharFormat format;
  format.setFontFamilies({name});
  SetThroughout(letter, format);
}

void SetFontSize(QTextEdit& letter, double points) {
  QTextCharFormat format;
  format.setFontPointSize(points);
  SetThroughout(letter, format);
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
