#pragma once

#include "documents/rtf/PartDigest.h"
#include "documents/rtf/Parts.h"
#include "documents/rtf/TextPlaces.h"

#include <QTextDocument>

#include <optional>

namespace rtf {

/// What of a letter was only reworded since it was read: text typed or deleted within its runs. The original is read
/// once more, for its text and where that stands, unless it is so long that saving would take noticeably longer.
class Rewording {
 public:
  /// `document` was read from `original`; both must outlive this object.
  Rewording(const QTextDocument& document, const QByteArray& original);

  /// How the original's bytes say what `now` says, a part of the document that was read as `read`. None where more than
  /// the text of runs has changed, where its places are not known, as in a letter too long, or where most of it is
  /// another text.
  std::optional<QList<Splice>> SplicesFor(const Part& read, const Part& now) const;

 private:
  std::optional<QList<TextPlaces::Change>> ChangesOf(const Part& read, const Part& now) const;
  QTextDocument m_original;
  TextPlaces m_places;
  const QTextDocument& m_document;
  std::optional<Frames> m_frames;
  std::optional<Frames> m_originalFrames;
};

}  // namespace rtf
