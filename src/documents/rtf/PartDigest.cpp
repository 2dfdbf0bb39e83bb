#include "documents/rtf/PartDigest.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>

#include <algorithm>

namespace rtf {

Frames::Frames(const QTextDocument& document) {
  QList<QTextFrame*> frames = document.rootFrame()->childFrames();
  while (!frames.isEmpty()) {
    const QTextFrame* frame = frames.takeLast();
    frames.append(frame->childFrames());
    m_frames.append(frame);
  }
  std::sort(m_frames.begin(), m_frames.end(),
            [](const QTextFrame* a, const QTextFrame* b) { return a->firstPosition() < b->firstPosition(); });
}

bool Frames::Around(int position) {
  for (; m_next < m_frames.size() && m_frames[m_next]->firstPosition() <= position; ++m_next) {
    m_end = std::max(m_end, m_frames[m_next]->lastPosition());
  }
  return position <= m_end;
}

QList<const QTextFrame*> Frames::At(const QTextBlock& block) const {
  const auto isBefore = [](const QTextFrame* frame, int position) { return frame->firstPosition() < position; };
  const auto first = std::lower_bound(m_frames.begin(), m_frames.end(), block.position(), isBefore);
  return {first, std::lower_bound(first, m_frames.end(), block.position() + block.length(), isBefore)};
}

void PartDigest::Add(const QTextBlock& block, const QTextBlock& text) {
  if (m_start < 0) {
    m_start = text.position();
  }
  const QTextList* list = block.textList();
  // The mark of the first paragraph is the document's: what is pasted in front of it may change it, and no undo
  // brings it back.
  const int mark = block.blockNumber() == 0 ? -1 : block.charFormatIndex();
  const int numbers[] = {text.length(), block.blockFormatIndex(), mark, list == nullptr ? -1 : list->formatIndex()};
  Add(numbers, sizeof numbers);
  auto run = text.begin();
  for (auto at = block.begin(); !at.atEnd() && !run.atEnd(); ++at, ++run) {
    const int format[] = {run.fragment().length(), at.fragment().charFormatIndex()};
    Add(format, sizeof format);
  }
  const QString characters = text.text();
  Add(characters.constData(), characters.size() * qsizetype(sizeof(QChar)));
  const QList<const QTextFrame*> frames = m_frames.At(block);
  const QList<const QTextFrame*> places = m_textFrames.At(text);
  for (qsizetype i = 0; i < frames.size() && i < places.size(); ++i) {
    const int frame[] = {frames[i]->formatIndex(), places[i]->firstPosition() - m_start,
                         places[i]->lastPosition() - m_start};
    Add(frame, sizeof frame);
  }
}

std::array<char, 16> PartDigest::Take() {
  std::array<char, 16> digest{};
  const QByteArrayView whole = m_hash.resultView();
  std::copy_n(whole.begin(), digest.size(), digest.begin());
  m_hash.reset();
  m_start = -1;
  return digest;
}

}  // namespace rtf
