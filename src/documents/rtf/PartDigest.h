#pragma once

#include <QByteArrayView>
#include <QCryptographicHash>
#include <QList>

#include <array>

class QTextBlock;
class QTextDocument;
class QTextFrame;

namespace rtf {

/// The frames of a document by their places.
class Frames {
 public:
  explicit Frames(const QTextDocument& document);

  /// Whether one of them is around the place. Places are asked in their order.
  bool Around(int position);
  /// Those that begin with the paragraph.
  QList<const QTextFrame*> At(const QTextBlock& block) const;

 private:
  QList<const QTextFrame*> m_frames;
  qsizetype m_next = 0;
  int m_end = -1;
};

/// The digests of a document's parts: over their texts and the numbers of their formats.
class PartDigest {
 public:
  /// Of paragraphs with the formats of one document and the text of another, or the same; these are their frames.
  PartDigest(const Frames& frames, const Frames& textFrames) : m_frames(frames), m_textFrames(textFrames) {}

  /// A paragraph with the formats of `block`, and the frames that begin there; `text` has its text, in as many runs, or
  /// none.
  void Add(const QTextBlock& block, const QTextBlock& text);
  /// Of what was added; the next part begins.
  std::array<char, 16> Take();

 private:
  template <typename T>
  void Add(const T* data, qsizetype size) {
    m_hash.addData(QByteArrayView(reinterpret_cast<const char*>(data), size));
  }

  const Frames& m_frames;
  const Frames& m_textFrames;
  int m_start = -1;
  QCryptographicHash m_hash{QCryptographicHash::Sha1};
};

}  // namespace rtf
