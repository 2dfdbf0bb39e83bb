#include "host/mailing/printing/PrinterPages.h"

namespace host {

PrinterPages::PrinterPages(PdfPages& pages, const PageRange& range, bool bothSides)
    : m_pages(pages), m_range(range), m_bothSides(bothSides), m_nothing(1, 1, QImage::Format_RGB32) {
  m_unseen.begin(&m_nothing);
}

QPainter& PrinterPages::Next() {
  ++m_count;
  if (m_count < m_range.first || (m_range.last > 0 && m_count > m_range.last)) {
    return m_unseen;
  }
  if (m_bothSides && m_beginsPart && m_pages.Count() % 2 == 1) {
    m_pages.Next();
  }
  m_beginsPart = false;
  return m_pages.Next();
}

}  // namespace host
