#include "documents/rtf/Parts.h"

#include "documents/rtf/Joint.h"
#include "documents/rtf/PartDigest.h"
#include "documents/rtf/Properties.h"

#include <QTextBlock>
#include <QTextDocument>

namespace rtf {

QList<Part> PartsOf(const QTextDocument& document) {
  Frames frames(document);
  QList<Part> parts;
  PartDigest digest(frames, frames);
  bool wasInTable = false;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    const bool inTable =
        frames.Around(block.position()) || block.blockFormat().hasProperty(TableProperty) || IsJoint(block);
    if (!inTable || !wasInTable) {
      if (!parts.isEmpty()) {
        parts.last().digest = digest.Take();
      }
      parts.append({.first = block.blockNumber(), .last = 0, .format = block.blockFormatIndex(), .digest = {}});
    }
    wasInTable = inTable;
    parts.last().last = block.blockNumber();
    digest.Add(block, block);
  }
  parts.last().digest = digest.Take();
  return parts;
}

}  // namespace rtf
