#include "documents/rtf/Parts.h"

#include "documents/rtf/Joint.h"
#include "documents/rtf/Properties.h"

#include <QCryptographicHash>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>

#include <algorithm>

namespace rtf {

namespace {

/// The frames of a document by their places, and which of them a part has.
class Frames {
 public:
  explicit Frames(const QTextDocument& document) {
    QList<QTextFrame*> frames = document.rootFrame()->childFrames();
    while (!frames.isEmpty()) {
      const QTextFrame* frame = frames.takeLast();
      frames.append(frame->childFrames());
      m_frames.append(frame);
    }
    std::sort(m_frames.begin(), m_frames.end(),
              [](const QTextFrame* a, const QTextFrame* b) { return a->firstPosition() < b->firstPosition(); });
  }

  /// Whether one of them is around the place. Places are asked in their order.
  bool Around(int position) {
    for (; m_next < m_frames.size() && m_frames[m_next]->firstPosition() <= position; ++m_next) {
      m_end = std::max(m_end, m_frames[m_next]->lastPosition());
    }
    return position <= m_end;
  }

  /// Calls `add` with those that begin from one place to another and have not been asked for.
  template <typename Add>
  void Between(int end, const Add& add) {
    for (; m_asked < m_frames.size() && m_frames[m_asked]->firstPosition() <= end; ++m_asked) {
      add(*m_frames[m_asked]);
    }
  }

 private:
  QList<const QTextFrame*> m_frames;
  qsizetype m_next = 0;
  qsizetype m_asked = 0;
  int m_end = -1;
};

class Digest {
 public:
  template <typename T>
  void Add(const T* data, qsizetype size) {
    m_hash.addData(QByteArrayView(reinterpret_cast<const char*>(data), size));
  }

  void Add(const QTextBlock& block) {
    const QTextList* list = block.textList();
    // The mark of the first paragraph is the document's: what is pasted in front of it may change it, and no undo
    // brings it back.
    const int mark = block.blockNumber() == 0 ? -1 : block.charFormatIndex();
    const int numbers[] = {block.length(), block.blockFormatIndex(), mark, list == nullptr ? -1 : list->formatIndex()};
    Add(numbers, sizeof numbers);
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment fragment = at.fragment();
      const int run[] = {fragment.length(), fragment.charFormatIndex()};
      Add(run, sizeof run);
    }
    const QString text = block.text();
    Add(text.constData(), text.size() * qsizetype(sizeof(QChar)));
  }

  void Take(std::array<char, 16>& digest) {
    const QByteArrayView whole = m_hash.resultView();
    std::copy_n(whole.begin(), digest.size(), digest.begin());
    m_hash.reset();
  }

 private:
  QCryptographicHash m_hash{QCryptographicHash::Sha1};
};

}  // namespace

QList<Part> PartsOf(const QTextDocument& document) {
  Frames frames(document);
  QList<Part> parts;
  Digest digest;
  bool wasInTable = false;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    const bool inTable =
        frames.Around(block.position()) || block.blockFormat().hasProperty(TableProperty) || IsJoint(block);
    if (!inTable || !wasInTable) {
      if (!parts.isEmpty()) {
        digest.Take(parts.last().digest);
      }
      parts.append({.first = block.blockNumber(), .last = 0, .format = block.blockFormatIndex(), .digest = {}});
    }
    wasInTable = inTable;
    Part& part = parts.last();
    part.last = block.blockNumber();
    digest.Add(block);
    const int start = document.findBlockByNumber(part.first).position();
    frames.Between(block.position() + block.length() - 1, [&](const QTextFrame& frame) {
      const int numbers[] = {frame.formatIndex(), frame.firstPosition() - start, frame.lastPosition() - start};
      digest.Add(numbers, sizeof numbers);
    });
  }
  digest.Take(parts.last().digest);
  return parts;
}

}  // namespace rtf
