#include "documents/letter/SectionStrip.h"

#include "documents/rtf/Properties.h"
#include "documents/rtf/Rtf.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <optional>

namespace documents {

namespace {

constexpr int mostCharacters = 5'000;

/// What stands for a number in a text of that format; empty for text that is none.
QByteArray InstructionOf(const QTextCharFormat& format) {
  if (format.hasProperty(rtf::PieceProperty)) {
    return format.property(rtf::PieceProperty).value<rtf::Piece>().Bytes();
  }
  const auto links = format.property(rtf::LinkProperty).value<rtf::Links>();
  return links.isEmpty() || links.last().isObject ? QByteArray() : links.last().head.Bytes();
}

bool HasWord(const QByteArray& instruction, const char* word) {
  QByteArray words = instruction.toUpper();
  for (const char separator : {'{', '}', '\r', '\n', '\t'}) {
    words.replace(separator, ' ');
  }
  return words.split(' ').contains(word);
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
  FindFields();
  m_text->documentLayout()->setPaintDevice(&m_device);
  SetWidth(width);
}

// The layout lets go of the device before that ends.
SectionStrip::~SectionStrip() {
  m_text->documentLayout()->setPaintDevice(nullptr);
}

void SectionStrip::FindFields() {
  for (QTextBlock block = m_text->begin(); block.isValid(); block = block.next()) {
    QByteArray before;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment part = at.fragment();
      const QByteArray instruction = InstructionOf(part.charFormat());
      const bool isPage = instruction.startsWith("\\chpgn") || HasWord(instruction, "PAGE");
      const bool isCount = HasWord(instruction, "NUMPAGES") || HasWord(instruction, "SECTIONPAGES");
      if (!instruction.isEmpty() && instruction == before &&
          part.text() != QString(QChar::ObjectReplacementCharacter)) {
        // The same field in another format.
        m_fields.last().length += part.length();
      } else if (isPage || isCount) {
        Place place{.start = QTextCursor(m_text.get()), .length = part.length()};
        place.start.setPosition(part.position());
        place.start.setKeepPositionOnInsert(true);
        place.field = isCount ? Field::Pages : Field::Page;
        m_fields.append(place);
      }
      before = isPage || isCount ? instruction : QByteArray();
    }
  }
}

void SectionStrip::SetWidth(int width) {
  m_text->setTextWidth(std::max(1, width));
}

double SectionStrip::Height() const {
  return m_text->size().height();
}

void SectionStrip::Paint(QPainter& painter, int page, int pages, double room) {
  for (Place& place : m_fields) {
    const QString number = QString::number(place.field == Field::Page ? page : pages);
    QTextCursor text(m_text.get());
    text.setPosition(place.start.position());
    text.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor, place.length);
    QTextCharFormat format = text.charFormat();
    format.setObjectType(QTextFormat::NoObject);
    text.insertText(number, format);
    place.length = static_cast<int>(number.size());
  }
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette.setColor(QPalette::Text, Qt::black);
  context.clip = QRectF(-m_text->textWidth(), 0, 3 * m_text->textWidth(), std::min(room, Height()));
  painter.save();
  painter.setClipRect(context.clip, Qt::IntersectClip);
  m_text->documentLayout()->draw(&painter, context);
  painter.restore();
}

}  // namespace documents
