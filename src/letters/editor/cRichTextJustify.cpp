#include "letters/editor/cRichTextJustify.h"

#include "documents/rtf/ParagraphFormat.h"
#include "letters/editor/ParagraphRange.h"
#include "platform/automation/Error.h"

#include <QTextEdit>

#include <algorithm>

namespace letters {

namespace {

constexpr qsizetype mostTabs = 32;

QTextCursor Selected(QTextEdit& edit, int start, int end) {
  const int last = edit.document()->characterCount() - 1;
  QTextCursor range(edit.document());
  range.setPosition(std::clamp(start, 0, last));
  range.setPosition(std::clamp(end, 0, last), QTextCursor::KeepAnchor);
  edit.setTextCursor(range);
  return range;
}

void DropSelection(QTextEdit& edit) {
  edit.setTextCursor(QTextCursor(edit.document()));
}

bool IsLeftAligned(const QTextBlockFormat& format) {
  const int alignment = int(format.alignment() & Qt::AlignHorizontal_Mask);
  return alignment == 0 || (alignment & Qt::AlignLeft) != 0;
}

}  // namespace

void cRichTextJustify::Justify(QTextEdit& hwndr, qint16 intStart, qint16 intEnd) const {
  ChangeParagraphs(Selected(hwndr, intStart, intEnd), [](QTextBlockFormat& format) {
    if (IsLeftAligned(format)) {
      format.setAlignment(Qt::AlignJustify);
    }
  });
  DropSelection(hwndr);
}

void cRichTextJustify::Settabs(QTextEdit& hwndr, const QList<qint32>& lngArrTabs, qint32 /*rwidth*/, qint32 lngstart,
                               qint32 lngEnd) const {
  if (lngArrTabs.isEmpty() || lngArrTabs.size() > mostTabs) {
    throw automation::Error(automation::SubscriptOutOfRange);
  }
  QList<QTextOption::Tab> tabs;
  for (const qint32 position : lngArrTabs) {
    tabs.append({position / rtf::twipsPerPixel, QTextOption::LeftTab});
  }
  ChangeParagraphs(Selected(hwndr, lngstart, lngEnd),
                   [&tabs](QTextBlockFormat& format) { format.setTabPositions(tabs); });
  DropSelection(hwndr);
}

}  // namespace letters
