#include "documents/letter/SectionStrip.h"

#include "documents/letter/PageFields.h"
#include "documents/letter/RowHeights.h"
#include "documents/letter/SmallCapitals.h"
#include "documents/rtf/FittedTabs.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/Rtf.h"

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

constexpr int mostCharacters = 5'000;

/// The font that the system takes for one that it has nothing better for.
QString FamilyFor(const QString& family) {
  return QFontInfo(QFont(family)).family();
}

bool IsUnknown(const QString& family) {
  static const QString forUnknown = FamilyFor(u"Kel sin esta letra"_s);
  return !family.isEmpty() && !QFontDatabase::hasFamily(family) && FamilyFor(family) == forUnknown;
}

/// Something that is kept at its place and would show elsewhere.
bool IsHiddenObject(const QTextCharFormat& format, const QTextDocument& text) {
  if (format.isImageFormat()) {
    return text.resource(QTextDocument::ImageResource, QUrl(format.toImageFormat().name())).isNull();
  }
  const QByteArray piece = format.property(rtf::PieceProperty).value<rtf::Piece>().Bytes();
  return piece.startsWith("{\\shp") || piece.startsWith("{\\*\\do") || piece.startsWith("{\\object");
}

template <typename Look>
void ForEachRun(const QTextDocument& text, const Look& look) {
  for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      look(at.fragment());
    }
  }
}

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
  GiveRowsTheirHeights(*m_text, std::max(1, width));
}

double SectionStrip::Height() const {
  return m_text->size().height();
}

double SectionStrip::Width() const {
  return m_text->size().width();
}

QStringList SectionStrip::MissingFonts() const {
  QStringList missing;
  ForEachRun(*m_text, [&missing](const QTextFragment& run) {
    const QString family = run.charFormat().fontFamilies().toStringList().value(0);
    if (!missing.contains(family) && !run.text().trimmed().isEmpty() && IsUnknown(family)) {
      missing.append(family);
    }
  });
  return missing;
}

bool SectionStrip::HidesObjects() const {
  bool hides = false;
  ForEachRun(*m_text, [&](const QTextFragment& run) { hides = hides || IsHiddenObject(run.charFormat(), *m_text); });
  return hides;
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
