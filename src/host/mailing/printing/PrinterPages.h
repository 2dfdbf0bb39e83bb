#pragma once

#include "host/mailing/output/PdfPages.h"

#include <QImage>

namespace host {

/// Which pages of a whole are printed, from 1.
struct PageRange {
  int first = 1;
  int last = 0;  ///< 0 for up to the end.
};

/// Pages on their way to a printer: some of all, and what the printer does to them taken back. On both sides of the
/// paper every part begins a sheet.
class PrinterPages : public PaintedPages {
 public:
  PrinterPages(PdfPages& pages, const PageRange& range, bool bothSides);

  void BeginPart() { m_beginsPart = true; }
  QPainter& Next() override;
  /// All pages so far, printed or not.
  int Count() const { return m_count; }
  bool IsBehindRange() const { return m_range.last > 0 && m_count >= m_range.last; }

 private:
  PdfPages& m_pages;
  PageRange m_range;
  bool m_bothSides;
  bool m_beginsPart = false;
  int m_count = 0;
  QImage m_nothing;
  QPainter m_unseen;
};

}  // namespace host
