#include "documents/rtf/ParagraphFormat.h"

#include "documents/rtf/Tokenizer.h"

#include <QByteArray>

#include <algorithm>

namespace rtf {

namespace {

// The hanging indent of a list that was made here, a quarter of an inch as word processors have it.
constexpr int ownListIndent = 360;

int Twips(double pixels) {
  return qRound(qBound(-1e6, pixels, 1e6) * twipsPerPixel);
}

int IndentTwips(double halfPoints) {
  return qRound(qBound(-1e6, halfPoints, 1e6) * twipsPerIndent);
}

QTextOption::TabType TypeOf(TabKind kind) {
  switch (kind) {
    case TabKind::Centre:
      return QTextOption::CenterTab;
    case TabKind::Right:
      return QTextOption::RightTab;
    case TabKind::Decimal:
      return QTextOption::DelimiterTab;
    default:
      return QTextOption::LeftTab;
  }
}

TabKind KindOf(QTextOption::TabType type) {
  switch (type) {
    case QTextOption::CenterTab:
      return TabKind::Centre;
    case QTextOption::RightTab:
      return TabKind::Right;
    case QTextOption::DelimiterTab:
      return TabKind::Decimal;
    default:
      return TabKind::Left;
  }
}

/// Qt counts from the start of the first line, RTF from the column's edge; a stop in front of the line is none. RTF has
/// a stop where a hanging indent's other lines begin.
QList<QTextOption::Tab> ShownTabs(const QList<TabStop>& tabs, int left, int first, bool listItem) {
  const int lineStart = listItem ? left : left + first;
  QList<QTextOption::Tab> shown;
  for (const TabStop& tab : tabs) {
    if (!tab.bar && tab.position > lineStart) {
      shown.append({(tab.position - lineStart) / twipsPerPixel, TypeOf(tab.kind), QLatin1Char(',')});
    }
  }
  if (!listItem && first < 0) {
    shown.append({-first / twipsPerPixel, QTextOption::LeftTab, QLatin1Char(',')});
  }
  std::stable_sort(shown.begin(), shown.end(), [](const auto& a, const auto& b) { return a.position < b.position; });
  return shown;
}

/// "\li720\fi-360\tqr\tldot\tx9072": the indents that the shown stops were made for, then the stops.
QString TabsText(const ParagraphStyle& style, bool listItem) {
  QString text = QStringLiteral("\\li%1\\fi%2").arg(style.left).arg(listItem ? 0 : style.first);
  const auto add = [&text](const char* word) {
    if (*word != '\0') {
      text += u'\\' + QString::fromLatin1(word);
    }
  };
  for (const TabStop& tab : style.tabs) {
    add(WordOf(tab.kind));
    add(WordOf(tab.leader));
    text += (tab.bar ? QStringLiteral("\\tb") : QStringLiteral("\\tx")) + QString::number(tab.position);
  }
  return text;
}

struct CarriedTabs {
  int left = 0;
  int first = 0;
  QList<TabStop> tabs;
};

CarriedTabs TabsFromText(const QString& text) {
  const QByteArray bytes = text.toLatin1();
  Tokenizer tokenizer({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  CarriedTabs carried;
  TabStop tab;
  for (Token token = tokenizer.Next(); token.kind == TokenKind::Word; token = tokenizer.Next()) {
    const Keyword* keyword = FindKeyword(token.text);
    switch (keyword == nullptr ? Action::Dropped : keyword->action) {
      case Action::LeftIndent:
        carried.left = token.parameter;
        break;
      case Action::FirstIndent:
        carried.first = token.parameter;
        break;
      case Action::TabKind:
        tab.kind = TabKind(keyword->value);
        break;
      case Action::TabLeader:
        tab.leader = TabLeader(keyword->value);
        break;
      case Action::TabStop:
      case Action::BarTab:
        tab.bar = keyword->action == Action::BarTab;
        tab.position = token.parameter;
        carried.tabs.append(tab);
        tab = {};
        break;
      default:
        break;
    }
  }
  return carried;
}

/// Whether stops are the others, or stand where a narrower text fits them (FitTabs).
bool AreFitted(const QList<QTextOption::Tab>& shown, const QList<QTextOption::Tab>& own) {
  return std::equal(shown.begin(), shown.end(), own.begin(), own.end(),
                    [](const QTextOption::Tab& a, const QTextOption::Tab& b) {
                      const bool isFitted =
                          a.type == QTextOption::RightTab && b.type != QTextOption::LeftTab && a.position < b.position;
                      return a == b || isFitted;
                    });
}

QList<TabStop> TabsOf(const QTextBlockFormat& format, const ParagraphStyle& style, bool listItem) {
  const CarriedTabs carried = TabsFromText(format.stringProperty(TabsProperty));
  const QList<QTextOption::Tab> shown = format.tabPositions();
  if (AreFitted(shown, ShownTabs(carried.tabs, carried.left, carried.first, listItem))) {
    return carried.tabs;
  }
  const int lineStart = listItem ? style.left : style.left + style.first;
  QList<TabStop> tabs;
  for (const QTextOption::Tab& tab : shown) {
    tabs.append({.position = Twips(tab.position) + lineStart, .kind = KindOf(tab.type)});
  }
  return tabs;
}

void SetLineSpacing(QTextBlockFormat& format, const ParagraphStyle& style) {
  if (style.lineSpacing < 0) {
    format.setLineHeight(-style.lineSpacing / twipsPerPixel, QTextBlockFormat::FixedHeight);
  } else if (style.lineSpacing > 0 && style.lineMultiple) {
    // 240 is a single line.
    format.setLineHeight(style.lineSpacing / 2.4, QTextBlockFormat::ProportionalHeight);
  } else if (style.lineSpacing > 0) {
    format.setLineHeight(style.lineSpacing / twipsPerPixel, QTextBlockFormat::MinimumHeight);
  }
}

void GetLineSpacing(const QTextBlockFormat& format, ParagraphStyle& style) {
  switch (format.lineHeightType()) {
    case QTextBlockFormat::ProportionalHeight:
      style.lineSpacing = qRound(format.lineHeight() * 2.4);
      style.lineMultiple = style.lineSpacing != 0;
      break;
    case QTextBlockFormat::FixedHeight:
      style.lineSpacing = -Twips(format.lineHeight());
      break;
    case QTextBlockFormat::MinimumHeight:
      style.lineSpacing = Twips(format.lineHeight());
      break;
    default:
      break;
  }
}

Alignment AlignmentOf(const QTextBlockFormat& format) {
  switch (int(format.alignment() & Qt::AlignHorizontal_Mask)) {
    case Qt::AlignHCenter:
      return Alignment::Centre;
    case Qt::AlignRight:
      return Alignment::Right;
    case Qt::AlignJustify:
      return Alignment::Justify;
    default:
      return Alignment::Left;
  }
}

Qt::Alignment Shown(Alignment alignment) {
  switch (alignment) {
    case Alignment::Centre:
      return Qt::AlignHCenter;
    case Alignment::Right:
      return Qt::AlignRight;
    case Alignment::Justify:
      return Qt::AlignJustify;
    default:
      return Qt::AlignLeft;
  }
}

}  // namespace

QList<QTextOption::Tab> OwnTabs(const QTextBlockFormat& format, bool listItem) {
  const CarriedTabs carried = TabsFromText(format.stringProperty(TabsProperty));
  const QList<QTextOption::Tab> own = ShownTabs(carried.tabs, carried.left, carried.first, listItem);
  return AreFitted(format.tabPositions(), own) ? own : format.tabPositions();
}

QTextBlockFormat ToBlockFormat(const ParagraphStyle& style, bool listItem) {
  QTextBlockFormat format;
  format.setAlignment(Shown(style.alignment));
  format.setLeftMargin(style.left / twipsPerIndent);
  format.setRightMargin(style.right / twipsPerIndent);
  format.setTopMargin(style.before / twipsPerPixel);
  format.setBottomMargin(style.after / twipsPerPixel);
  if (listItem) {
    format.setProperty(FirstIndentProperty, style.first);
  } else {
    format.setTextIndent(style.first / twipsPerIndent);
  }
  SetLineSpacing(format, style);
  if (style.rightToLeft) {
    format.setLayoutDirection(Qt::RightToLeft);
  }
  if (const auto shown = ShownTabs(style.tabs, style.left, style.first, listItem); !shown.isEmpty()) {
    format.setTabPositions(shown);
  }
  if (!style.tabs.isEmpty() || format.hasProperty(QTextFormat::TabPositions)) {
    format.setProperty(TabsProperty, TabsText(style, listItem));
  }
  if (style.pageBreakBefore) {
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    format.setProperty(BreakProperty, int(BreakKind::Property));
  }
  if (!style.carried.IsEmpty()) {
    format.setProperty(ParagraphWordsProperty, ToText(style.carried.Words()));
  }
  return format;
}

ParagraphStyle FromBlockFormat(const QTextBlockFormat& format, const QTextListFormat* list, double indentWidth) {
  ParagraphStyle style;
  style.alignment = AlignmentOf(format);
  const double indents = format.indent() + (list == nullptr ? 0 : list->indent());
  style.left = IndentTwips(format.leftMargin()) + Twips(indents * indentWidth);
  style.right = IndentTwips(format.rightMargin());
  style.before = Twips(format.topMargin());
  style.after = Twips(format.bottomMargin());
  if (list == nullptr) {
    style.first = IndentTwips(format.textIndent());
  } else if (format.hasProperty(FirstIndentProperty)) {
    style.first = format.intProperty(FirstIndentProperty);
  } else {
    style.left = std::max(style.left, ownListIndent);
    style.first = -ownListIndent;
  }
  GetLineSpacing(format, style);
  style.rightToLeft = format.layoutDirection() == Qt::RightToLeft;
  style.tabs = TabsOf(format, style, list != nullptr);
  const bool breaks = (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) != 0;
  style.pageBreakBefore = breaks && BreakKind(format.intProperty(BreakProperty)) == BreakKind::Property;
  for (const CarriedWord& word : WordsFromText(format.stringProperty(ParagraphWordsProperty))) {
    style.carried.Append(word);
  }
  return style;
}

}  // namespace rtf
