#include "host/paper/ListPages.h"

#include "documents/letter/HalfPoints.h"

#include <QDateTime>
#include <QFontInfo>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Half-points.
constexpr int textSize = 18;
constexpr int titleSize = 28;
constexpr int smallSize = 16;
constexpr double margin = 85;
constexpr double lineHeight = 23;
constexpr double rowPadding = 5;
constexpr double columnGap = 20;
constexpr double narrowestColumn = 110;
constexpr double headHeight = 80;
constexpr double footHeight = 34;
constexpr double ascent = 18;

constexpr int mostLines = 12;
// The smallest that counts.
constexpr double leastSpacing = 1.0 / 64;
// Numbers are alike: the widest of so many, and the extremes, stand for all.
constexpr int measuredNumbers = 500;
constexpr double halfPointsPerMicrometre = documents::halfPointsPerInch / 25400.0;

const QColor ruleColour(0xb0, 0xb0, 0xb0);

documents::Paper SheetOf(ListPages::Orientation orientation) {
  documents::Paper sheet = documents::UsualPaper();
  if (orientation == ListPages::Orientation::Landscape) {
    std::swap(sheet.width, sheet.height);
  }
  return sheet;
}

QFont PaperFont(int size, bool isBold = false) {
  QFont font(QFontInfo(QFont(u"Sans Serif"_s)).family());
  font.setPixelSize(size);
  font.setBold(isBold);
  // Widths are added up letter by letter, and are those of the design; letters are not joined, so that they are found.
  font.setKerning(false);
  font.setLetterSpacing(QFont::AbsoluteSpacing, leastSpacing);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

double WidthOf(const documents::Paper& sheet) {
  return double(sheet.width) * halfPointsPerMicrometre;
}

double HeightOf(const documents::Paper& sheet) {
  return double(sheet.height) * halfPointsPerMicrometre;
}

double RoomOf(const documents::Paper& sheet) {
  return WidthOf(sheet) - 2 * margin;
}

double WithGaps(double widths, std::size_t columns) {
  return widths + columnGap * double(columns == 0 ? 0 : columns - 1);
}

}  // namespace

ListPages::ListPages(ListTable table, Orientation orientation)
    : m_table(std::move(table)),
      m_sheet(SheetOf(orientation)),
      m_moment(QDateTime::currentDateTime().toString(u"dd/MM/yyyy HH:mm"_s)),
      m_font(PaperFont(textSize)),
      m_bold(PaperFont(textSize, true)),
      m_small(PaperFont(smallSize)),
      m_glyphs(m_font),
      m_measure(m_font),
      m_boldMeasure(m_bold),
      m_smallMeasure(m_small) {
  PlaceColumns();
  BreakPages();
}

ListPages::Orientation ListPages::Proposed(const ListTable& table) {
  const ListPages upright(table, Orientation::Upright);
  return upright.IsNarrowed() || !upright.LeftOut().isEmpty() ? Orientation::Landscape : Orientation::Upright;
}

double ListPages::NaturalWidth(int column) const {
  double width = m_boldMeasure.Width(m_table.Heading(column));
  const int measured = m_table.IsText(column) ? m_table.RowCount() : std::min(m_table.RowCount(), measuredNumbers);
  for (int row = 0; row < measured; ++row) {
    width = std::max(width, m_measure.Width(m_table.Text(row, column)));
  }
  if (!m_table.IsText(column) && m_table.RowCount() > 0) {
    const auto [least, most] = std::ranges::minmax_element(m_table.rows.rows, {}, [&](int record) {
      return m_table.rows.records.Value(record, m_table.columns[column]).toDouble();
    });
    for (const int record : {*least, *most}) {
      width = std::max(width, m_measure.Width(m_table.rows.records.Display(record, m_table.columns[column])));
    }
  }
  return std::ceil(width);
}

// Texts give way to each other: the widest first, down to what a few words need.
void ListPages::PlaceColumns() {
  std::vector<double> natural;
  std::vector<double> least;
  for (int column = 0; column < m_table.ColumnCount(); ++column) {
    natural.push_back(NaturalWidth(column));
    const double heading = m_boldMeasure.Width(m_table.Heading(column));
    least.push_back(m_table.IsText(column) ? std::min(natural.back(), std::max(narrowestColumn, heading))
                                           : natural.back());
  }
  const double room = RoomOf(m_sheet);
  const auto sum = [](const std::vector<double>& widths) {
    return WithGaps(std::accumulate(widths.begin(), widths.end(), 0.0), widths.size());
  };
  while (!least.empty() && sum(least) > room) {
    m_leftOut.prepend(m_table.Heading(static_cast<int>(least.size()) - 1));
    least.pop_back();
    natural.pop_back();
  }
  std::vector<double> widths = natural;
  double widest = room;
  while (sum(widths) > room && widest > 0) {
    --widest;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      widths[i] = std::min(natural[i], std::max(least[i], widest));
    }
  }
  double left = margin;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    m_columns.push_back({.left = left, .width = widths[i], .mayWrap = widths[i] < natural[i]});
    m_isNarrowed = m_isNarrowed || m_columns.back().mayWrap;
    left += widths[i] + columnGap;
  }
}

int ListPages::LinesOf(int row) const {
  qsizetype lines = 1;
  for (int column = 0; column < static_cast<int>(m_columns.size()); ++column) {
    const Column& place = m_columns[static_cast<std::size_t>(column)];
    if (place.mayWrap) {
      const QString text = m_table.Text(row, column);
      if (m_measure.Width(text) > place.width) {
        lines = std::max(lines, m_measure.Lines(text, place.width, mostLines).size());
      }
    }
  }
  return static_cast<int>(lines);
}

double ListPages::TopOfRows(int page) const {
  return margin + (page == 0 ? headHeight : 0) + lineHeight + 2 * rowPadding;
}

void ListPages::BreakPages() {
  m_firstRows = {0};
  const double bottom = HeightOf(m_sheet) - margin - footHeight;
  double top = TopOfRows(0);
  for (int row = 0; row < m_table.RowCount(); ++row) {
    const double height = LinesOf(row) * lineHeight + rowPadding;
    if (top + height > bottom) {
      m_firstRows.push_back(row);
      top = TopOfRows(1);
    }
    top += height;
  }
}

void ListPages::Paint(QPainter& painter, int page) const {
  painter.save();
  painter.setPen(Qt::black);
  double top = margin;
  if (page == 0) {
    top = PaintHead(painter);
  }
  top = PaintHeadings(painter, top);
  const int end = page + 1 < Count() ? m_firstRows[static_cast<std::size_t>(page) + 1] : m_table.RowCount();
  Page rows{painter, {}, {}};
  for (int row = m_firstRows[static_cast<std::size_t>(page)]; row < end; ++row) {
    top = PaintRow(rows, row, top);
    rows.rules.append(QLineF(margin, top, WidthOf(m_sheet) - margin, top));
  }
  GlyphTable::Paint(painter, rows.glyphs);
  painter.setPen(QPen(ruleColour, 0));
  painter.drawLines(rows.rules);
  painter.setPen(Qt::black);
  PaintFoot(painter, page);
  painter.restore();
}

double ListPages::PaintHead(QPainter& painter) const {
  painter.setFont(PaperFont(titleSize, true));
  painter.drawText(QPointF(margin, margin + titleSize), m_table.title);
  painter.setFont(m_small);
  QStringList parts = {m_table.origin, m_table.CountText(), m_moment, m_table.user};
  parts.removeAll(QString());
  const QString line = m_smallMeasure.Lines(parts.join(u" · "_s), RoomOf(m_sheet), 1).constFirst();
  painter.drawText(QPointF(margin, margin + titleSize + lineHeight + rowPadding), line);
  return margin + headHeight;
}

double ListPages::PaintHeadings(QPainter& painter, double top) const {
  painter.setFont(m_bold);
  for (int column = 0; column < static_cast<int>(m_columns.size()); ++column) {
    const Column& place = m_columns[static_cast<std::size_t>(column)];
    const double free = place.width - m_boldMeasure.Width(m_table.Heading(column));
    const double left = place.left + (m_table.IsNumber(column) ? free : 0);
    painter.drawText(QPointF(left, top + ascent), m_table.Heading(column));
  }
  const double bottom = top + lineHeight + rowPadding;
  painter.setPen(QPen(Qt::black, 1));
  painter.drawLine(QLineF(margin, bottom, WidthOf(m_sheet) - margin, bottom));
  painter.setFont(m_font);
  return bottom + rowPadding;
}

// Returns where the row ends.
double ListPages::PaintRow(Page& page, int row, double top) const {
  int lines = 1;
  for (int column = 0; column < static_cast<int>(m_columns.size()); ++column) {
    lines = std::max(lines, PaintCell(page, m_columns[static_cast<std::size_t>(column)], m_table.IsNumber(column),
                                      m_table.Text(row, column), top + ascent));
  }
  return top + lines * lineHeight + rowPadding;
}

// Returns how many lines it took.
int ListPages::PaintCell(Page& page, const Column& column, bool atTheRight, const QString& text,
                         double baseline) const {
  const double width = column.mayWrap || atTheRight ? m_measure.Width(text) : 0;
  if (!column.mayWrap || width <= column.width) {
    PaintLine(page, text.simplified(), QPointF(column.left + (atTheRight ? column.width - width : 0), baseline));
    return 1;
  }
  const QStringList lines = m_measure.Lines(text, column.width, mostLines);
  for (const QString& line : lines) {
    PaintLine(page, line, QPointF(column.left, baseline));
    baseline += lineHeight;
  }
  return static_cast<int>(lines.size());
}

void ListPages::PaintLine(Page& page, const QString& text, QPointF baseline) const {
  if (!m_glyphs.Add(text, baseline, page.glyphs)) {
    page.painter.drawText(baseline, text);
  }
}

void ListPages::PaintFoot(QPainter& painter, int page) const {
  painter.setFont(m_small);
  const QString text = u"Página %1 de %2"_s.arg(page + 1).arg(Count());
  const double left = (WidthOf(m_sheet) - m_smallMeasure.Width(text)) / 2;
  painter.drawText(QPointF(left, HeightOf(m_sheet) - margin), text);
}

QString ListPages::NameOf(int part) const {
  return u"%1 %2"_s.arg(m_table.title).arg(part + 1);
}

void ListPages::Paint(int part, PaintedPages& pages) const {
  Paint(pages.Next(), part);
}

}  // namespace host
