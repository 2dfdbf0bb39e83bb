#include "documents/letter/LetterPainter.h"

#include "documents/letter/PageFields.h"
#include "documents/letter/RowHeights.h"
#include "documents/letter/SmallCapitals.h"
#include "documents/letter/TableBreaks.h"
#include "documents/letter/WholeTables.h"
#include "documents/rtf/FittedTabs.h"
#include "documents/rtf/Rtf.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPainterPath>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

namespace documents {

LetterPainter::LetterPainter(const QTextDocument& letter, const Margins& margins, const Paper& paper)
    : m_strips(std::make_unique<const LetterStrips>(letter, margins, paper)) {
  PaperCopy copy = CopyForPaper(letter);
  m_pages = std::move(copy.letter);
  m_seams = copy.seams;
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
  // Each setting would lay all of it out again; the last one does.
  m_pages->setLayoutEnabled(false);
  m_pages->setDefaultFont(letter.defaultFont());
  m_pages->setDocumentMargin(0);
  m_pages->setUseDesignMetrics(true);
  m_pages->setResourceProvider(letter.resourceProvider());
  m_pages->documentLayout()->setPaintDevice(&m_device);
  QTextOption option = m_pages->defaultTextOption();
  option.setTabStopDistance(letter.defaultTextOption().tabStopDistance());
  m_pages->setDefaultTextOption(option);
  ShowSmallCapitals(*m_pages, 0, m_pages->characterCount());
  rtf::FitTabs(*m_pages, TextWidth(margins, paper).count);
  GiveCellsTheirSpace(*m_pages);
  m_pages->setLayoutEnabled(true);
  GiveRowsTheirHeights(*m_pages, ToHalfPoints(TextWidth(margins, paper)));
  m_pages->setPageSize(QSizeF(ToHalfPoints(TextWidth(margins, paper)), ToHalfPoints(TextHeight(margins, paper))));
  if (PageCount() > 0) {
    KeepRows(*m_pages);
    UncutCells(*m_pages);
    FillPageFields(
        *m_pages, [this](int position) { return PageOfCopy(position); }, PageCount());
  }
}

int LetterPainter::PageCount() const {
  return m_pages->pageSize().isEmpty() ? 0 : m_pages->pageCount();
}

int LetterPainter::PageOf(int position) const {
  return PageOfCopy(position -
                    static_cast<int>(std::lower_bound(m_seams.begin(), m_seams.end(), position) - m_seams.begin()));
}

int LetterPainter::PageOfCopy(int position) const {
  const int count = PageCount();
  const QTextBlock block = m_pages->findBlock(position);
  if (count == 0 || !block.isValid()) {
    return std::max(0, count - 1);
  }
  const double top = m_pages->documentLayout()->blockBoundingRect(block).top();
  const QTextLine line = block.layout()->lineForTextPosition(position - block.position());
  const double y = top + (line.isValid() ? line.y() : 0);
  return std::clamp(static_cast<int>(y / m_pages->pageSize().height()), 0, count - 1);
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
  painter.save();
  if (const QPainterPath stubs = TableStubs(*m_pages, page); !stubs.isEmpty()) {
    QPainterPath all;
    all.addRect(context.clip);
    painter.setClipPath(all.subtracted(stubs), Qt::IntersectClip);
  }
  m_pages->documentLayout()->draw(&painter, context);
  painter.restore();
  PaintTableBreaks(painter, *m_pages, page);
  painter.restore();
  if (m_strips != nullptr) {
    m_strips->Paint(painter, page, m_pages->pageCount(), m_paperHeight);
  }
}

}  // namespace documents
