#include "documents/letter/LetterTemplate.h"

#include "documents/letter/RunPictures.h"
#include "documents/rtf/GroupDocument.h"
#include "documents/rtf/Preamble.h"
#include "documents/rtf/Properties.h"

#include <QTextBlock>
#include <QTextCursor>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

void SayMargins(QTextDocument& letter, const Margins& margins) {
  rtf::PreambleData data = *rtf::PreambleOf(letter).data;
  const auto say = [&data](std::string_view word, double centimetres) {
    data.words.Put(*rtf::FindKeyword(word), true, FromCentimetres(centimetres).count);
  };
  say("paperw", InCentimetres(UsualPaper().width));
  say("paperh", InCentimetres(UsualPaper().height));
  say("margl", margins.left);
  say("margr", margins.right);
  say("margt", margins.top);
  say("margb", margins.bottom);
  rtf::SetPreamble(letter, std::move(data));
}

QByteArray BytesOf(const QTextFormat& format, int property) {
  return format.property(property).value<rtf::Piece>().Bytes();
}

}  // namespace

LetterTemplate::LetterTemplate(std::unique_ptr<QTextDocument> letter, const Margins& margins)
    : m_letter(std::move(letter)) {
  SayMargins(*m_letter, margins);
  KeepPictures(*m_letter);
  LetterMarkers found = FindMarkers(*m_letter);
  m_places = found.places;
  m_faults = found.faults;
  for (const MarkerPlace& place : m_places) {
    m_markers.append(place.marker);
  }
  FindCarried();
}

LetterTemplate::~LetterTemplate() = default;

void LetterTemplate::FindCarried() {
  m_headers = rtf::SplitGroups(rtf::PreambleOf(*m_letter).data->sectionGroups);
  for (qsizetype i = 0; i < m_headers.size(); ++i) {
    AddCarried(-1, i, m_headers[i]);
  }
  for (QTextBlock block = m_letter->begin(); block.isValid(); block = block.next()) {
    if (BytesOf(block.blockFormat(), rtf::SectionProperty).contains('[')) {
      m_faults.append(u"Hay corchetes en el encabezado o el pie de otra sección, que no se rellenan."_s);
    }
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QByteArray bytes = BytesOf(at.fragment().charFormat(), rtf::PieceProperty);
      if (bytes.startsWith("{\\footnote")) {
        AddCarried(at.fragment().position(), 0, bytes);
      }
    }
  }
}

void LetterTemplate::AddCarried(int position, qsizetype group, const QByteArray& bytes) {
  auto document = std::make_unique<QTextDocument>();
  document->setUndoRedoEnabled(false);
  rtf::ReadGroup(bytes, *m_letter, *document);
  const LetterMarkers found = FindMarkers(*document);
  m_faults += found.faults;
  if (found.places.isEmpty()) {
    return;
  }
  for (const MarkerPlace& place : found.places) {
    m_markers.append(place.marker);
  }
  m_carried.push_back({position, group, bytes, std::move(document), found.places});
}

bool LetterTemplate::FollowsTitle(qsizetype number) const {
  if (number == 0 || number >= m_places.size() || m_places[number - 1].marker != Marker::Title) {
    return false;
  }
  const MarkerPlace& title = m_places[number - 1];
  for (int at = title.position + title.length; at < m_places[number].position; ++at) {
    if (!m_letter->characterAt(at).isSpace()) {
      return false;
    }
  }
  return true;
}

void LetterTemplate::FillCarried(QTextDocument& copy, const QStringList& values) const {
  qsizetype next = m_places.size();
  QList<QByteArray> headers = m_headers;
  for (const Carried& carried : m_carried) {
    const std::unique_ptr<QTextDocument> filled(carried.document->clone());
    filled->setUndoRedoEnabled(false);
    FillMarkers(*filled, carried.places, values.mid(next, carried.places.size()));
    next += carried.places.size();
    const QByteArray group = rtf::WriteGroup(carried.bytes, *filled);
    if (carried.position < 0) {
      headers[carried.group] = group;
      continue;
    }
    QTextCursor cursor(&copy);
    cursor.setPosition(carried.position);
    cursor.setPosition(carried.position + 1, QTextCursor::KeepAnchor);
    QTextCharFormat format = cursor.charFormat();
    const rtf::Piece piece(group);
    format.setProperty(rtf::PieceNameProperty, piece.Name());
    format.setProperty(rtf::PieceProperty, QVariant::fromValue(piece));
    cursor.setCharFormat(format);
  }
  if (headers != m_headers) {
    rtf::PreambleData data = *rtf::PreambleOf(copy).data;
    data.sectionGroups = headers.join();
    rtf::SetPreamble(copy, std::move(data));
  }
}

std::unique_ptr<QTextDocument> LetterTemplate::Filled(const QStringList& values, const QColor& ground) const {
  std::unique_ptr<QTextDocument> copy(m_letter->clone());
  copy->setUndoRedoEnabled(false);
  copy->setResourceProvider(m_letter->resourceProvider());
  FillCarried(*copy, values);
  FillMarkers(*copy, m_places, values.first(m_places.size()), ground);
  return copy;
}

void LetterTemplate::MoveTo(QThread* thread) {
  m_letter->moveToThread(thread);
  for (const Carried& carried : m_carried) {
    carried.document->moveToThread(thread);
  }
}

}  // namespace documents
