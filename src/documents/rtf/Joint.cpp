#include "documents/rtf/Joint.h"

#include "documents/rtf/Properties.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

namespace rtf {

namespace {

// What Qt's documents begin and end frames with, in place of a paragraph's end.
constexpr QChar frameBegin(0xFDD0);
constexpr QChar frameEnd(0xFDD1);

bool BeginsTable(const QTextBlock& block) {
  const auto* table = qobject_cast<const QTextTable*>(block.document()->object(block.charFormat().objectIndex()));
  return table != nullptr && table->firstPosition() == block.position();
}

}  // namespace

bool IsJoint(const QTextBlock& block) {
  if (block.length() != 1 || block.blockFormat().hasProperty(TableProperty)) {
    return false;
  }
  const QTextDocument& document = *block.document();
  const QChar end = document.characterAt(block.position());
  if (end == frameBegin && block.next().isValid() && BeginsTable(block.next())) {
    return true;
  }
  const bool isBehind = block.position() > 0 && document.characterAt(block.position() - 1) == frameEnd;
  return isBehind && end != frameBegin && end != frameEnd;
}

}  // namespace rtf
