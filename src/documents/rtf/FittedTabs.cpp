#include "documents/rtf/FittedTabs.h"

#include "documents/rtf/ParagraphFormat.h"
#include "documents/rtf/Source.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

namespace rtf {

namespace {

using Tabs = QList<QTextOption::Tab>;

// The text's end stays inside the line, whatever is rounded.
constexpr double inside = 0.5;

Tabs Fitted(const QTextBlock& block, double width) {
  const QTextBlockFormat format = block.blockFormat();
  const double indents = (format.leftMargin() + format.textIndent() + format.rightMargin()) * twipsPerIndent;
  const double end = width - indents / twipsPerPixel - inside;
  Tabs tabs = OwnTabs(format, block.textList() != nullptr);
  for (QTextOption::Tab& tab : tabs) {
    const bool isBeyond = tab.position > end && end > 0;
    if (isBeyond && (tab.type == QTextOption::RightTab || tab.type == QTextOption::CenterTab)) {
      tab.type = QTextOption::RightTab;
      tab.position = end;
    }
  }
  return tabs;
}

struct Change {
  int position;
  QTextBlockFormat format;
};

QList<Change> ChangesOf(const QTextDocument& document, double width) {
  QList<Change> changes;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    QTextBlockFormat format = block.blockFormat();
    if (!format.hasProperty(QTextFormat::TabPositions) || document.frameAt(block.position()) != document.rootFrame()) {
      continue;
    }
    if (const Tabs tabs = Fitted(block, width); tabs != format.tabPositions()) {
      format.setTabPositions(tabs);
      changes.append({block.position(), format});
    }
  }
  return changes;
}

void Apply(QTextDocument& document, const QList<Change>& changes) {
  QTextCursor cursor(&document);
  cursor.joinPreviousEditBlock();
  for (const Change& change : changes) {
    cursor.setPosition(change.position);
    cursor.setBlockFormat(change.format);
  }
  cursor.endEditBlock();
}

}  // namespace

void FitTabs(QTextDocument& document, int width) {
  const QList<Change> changes = ChangesOf(document, width / twipsPerPixel);
  if (changes.isEmpty()) {
    return;
  }
  Source& source = Source::Of(document);
  const bool isUnchanged = source.IsUnchanged(document);
  const bool isModified = document.isModified();
  // Otherwise it would be a step of its own, and nothing would show when it is undone.
  const bool hasNoSteps = !document.isUndoAvailable() && document.isUndoRedoEnabled();
  if (hasNoSteps) {
    document.setUndoRedoEnabled(false);
  }
  Apply(document, changes);
  if (hasNoSteps) {
    document.setUndoRedoEnabled(true);
  }
  document.setModified(isModified);
  if (isUnchanged) {
    source.Renew(document);
  }
}

}  // namespace rtf
