#pragma once

#include "host/mailing/output/PrintedWork.h"
#include "host/paper/GlyphTable.h"
#include "host/paper/ListTable.h"
#include "host/paper/TextMeasure.h"
#include "paper/Pages.h"

#include <QLineF>

#include <vector>

namespace host {

/// The pages of a list: what it is on the first one, the columns' headings on each, the page's number at the foot.
/// Columns are as wide as what they hold; where that is too much for the sheet, those of texts become narrower and
/// their texts take several lines, and where that is not enough the last columns are left out. Pages are counted at the
/// creation, in a few milliseconds for each ten thousand rows, and painted when they are asked for. For any thread.
class ListPages : public paper::Pages, public PrintedWork {
 public:
  enum class Orientation { Upright, Landscape };

  ListPages(ListTable table, Orientation orientation);

  /// The orientation in which no column has to become narrower, else landscape.
  static Orientation Proposed(const ListTable& table);

  bool HasColumns() const { return !m_columns.empty(); }
  /// The titles of the columns that have no room.
  const QStringList& LeftOut() const { return m_leftOut; }
  /// Some text takes several lines.
  bool IsNarrowed() const { return m_isNarrowed; }

  int Count() const override { return static_cast<int>(m_firstRows.size()); }
  const documents::Paper& Sheet() const override { return m_sheet; }
  void Paint(QPainter& painter, int page) const override;

  QString Title() const override { return m_table.title; }
  QString NameOf(int part) const override;
  const documents::Paper& Paper() const override { return m_sheet; }
  void Paint(int part, PaintedPages& pages) const override;

 private:
  struct Column {
    double left = 0;
    double width = 0;
    bool mayWrap = false;  ///< Some of its texts are wider.
  };

  /// Where rows are painted; what is plain waits for the page's end.
  struct Page {
    QPainter& painter;
    PlacedGlyphs glyphs;
    QList<QLineF> rules;
  };

  double NaturalWidth(int column) const;
  void PlaceColumns();
  void BreakPages();
  int LinesOf(int row) const;
  double TopOfRows(int page) const;
  double PaintHead(QPainter& painter) const;
  double PaintHeadings(QPainter& painter, double top) const;
  double PaintRow(Page& page, int row, double top) const;
  int PaintCell(Page& page, const Column& column, bool atTheRight, const QString& text, double baseline) const;
  void PaintLine(Page& page, const QString& text, QPointF baseline) const;
  void PaintFoot(QPainter& painter, int page) const;

  ListTable m_table;
  documents::Paper m_sheet;
  QString m_moment;
  QFont m_font;
  QFont m_bold;
  QFont m_small;
  GlyphTable m_glyphs;
  TextMeasure m_measure;
  TextMeasure m_boldMeasure;
  TextMeasure m_smallMeasure;
  std::vector<Column> m_columns;
  std::vector<int> m_firstRows;  ///< Of each page.
  QStringList m_leftOut;
  bool m_isNarrowed = false;
};

}  // namespace host
