#include "documents/letter/LetterPainter.h"

#include "documents/rtf/Rtf.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>

namespace documents {

LetterPainter::LetterPainter(const QTextDocument& letter, const Margins& margins, const Paper& paper)
    : m_pages(letter.clone()), m_strips(std::make_unique<const LetterStrips>(letter, margins, paper)) {
  LayOut(letter, margins, paper);
}

LetterPainter::LetterPainter(const QTextCursor& selection, const Margins& margins, const Paper& paper)
    : m_pages(std::make_unique<QTextDocument>()) {
  // Qt's own piece of a table has no widths.
  rtf::Read(rtf::WriteSelection(selection), *m_pages);
  LayOut(*selection.document(), margins, paper);
}

// The layout lets go of the device before that ends.
LetterPainter::~LetterPainter() {
  m_pages->documentLayout()->setPaintDevice(nullptr);
}

void LetterPainter::LayOut(const QTextDocument& letter, const Margins& margins, const Paper& paper) {
  m_corner = QPointF(ToHalfPoints(FromCentimetres(margins.left)), ToHalfPoints(FromCentimetres(margins.top)));
  m_paperHeight = ToHalfPoints(FromCentimetres(InCentimetres(paper.height)));
  m_pages->setDefaultFont(letter.defaultFont());
  m_pages->setDocumentMargin(0);
  m_pages->setUseDesignMetrics(true);
  m_pages->setResourceProvider(letter.resourceProvider());
  m_pages->documentLayout()->setPaintDevice(&m_device);
  QTextOption option = m_pages->defaultTextOption();
  option.setTabStopDistance(letter.defaultTextOption().tabStopDistance());
  m_pages->setDefaultTextOption(option);
  m_pages->setPageSize(QSizeF(ToHalfPoints(TextWidth(margins, paper)), ToHalfPoints(TextHeight(margins, paper))));
}

int LetterPainter::PageCount() const {
  return m_pages->pageSize().isEmpty() ? 0 : m_pages->pageCount();
}

void LetterPainter::Paint(QPainter& painter, int page) const {
  const QSizeF size = m_pages->pageSize();
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette.setColor(QPalette::Text, Qt::black);
  // Sideways there is the margin for what leans over.
  context.clip = QRectF(-m_corner.x(), page * size.height(), size.width() + 2 * m_corner.x(), size.height());
  painter.save();
  painter.translate(m_corner.x(), m_corner.y() - page * size.height());
  painter.setClipRect(context.clip);
  // A line that begins where the page ends is the next page's.
  context.clip.setBottom(context.clip.bottom() - 1);
  m_pages->documentLayout()->draw(&painter, context);
  painter.restore();
  if (m_strips != nullptr) {
    m_strips->Paint(painter, page, m_pages->pageCount(), m_paperHeight);
  }
}

}  // namespace documents
