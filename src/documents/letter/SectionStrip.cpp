#include "documents/letter/SectionStrip.h"

#include "documents/letter/PageFields.h"
#include "documents/letter/SmallCapitals.h"
#include "documents/rtf/FittedTabs.h"
#include "documents/rtf/Rtf.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextDocument>

#include <algorithm>

namespace documents {

namespace {

constexpr int mostCharacters = 5'000;

}  // namespace

SectionStrip::SectionStrip(const QByteArray& content, const QTextDocument& letter, int width)
    : m_text(std::make_unique<QTextDocument>()) {
  m_text->setUndoRedoEnabled(false);
  m_text->setDefaultFont(letter.defaultFont());
  m_text->setDocumentMargin(0);
  m_text->setUseDesignMetrics(true);
  m_isTooLong =
      rtf::Read(content, *m_text).outcome == rtf::Outcome::Refused || m_text->characterCount() > mostCharacters;
  if (m_isTooLong) {
    m_text->clear();
  }
  m_text->documentLayout()->setPaintDevice(&m_device);
  ShowSmallCapitals(*m_text, 0, m_text->characterCount());
  SetWidth(width);
}

// The layout lets go of the device before that ends.
SectionStrip::~SectionStrip() {
  m_text->documentLayout()->setPaintDevice(nullptr);
}

void SectionStrip::SetWidth(int width) {
  rtf::FitTabs(*m_text, FromHalfPoints(width).count);
  m_text->setTextWidth(std::max(1, width));
}

double SectionStrip::Height() const {
  return m_text->size().height();
}

void SectionStrip::Paint(QPainter& painter, int page, int pages, double room) {
  FillPageFields(
      *m_text, [page](int) { return page - 1; }, pages);
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette.setColor(QPalette::Text, Qt::black);
  context.clip = QRectF(-m_text->textWidth(), 0, 3 * m_text->textWidth(), std::min(room, Height()));
  painter.save();
  painter.setClipRect(context.clip, Qt::IntersectClip);
  m_text->documentLayout()->draw(&painter, context);
  painter.restore();
}

}  // namespace documents
