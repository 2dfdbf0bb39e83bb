#include "documents/letter/WholeTables.h"

#include "documents/rtf/Rtf.h"

#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

#include <limits>

namespace documents {

namespace {

/// Between the parts of tables with header rows, which only the first part has.
QList<int> SeamsOf(const QTextDocument& letter) {
  QList<int> seams;
  const QTextTable* before = nullptr;
  bool repeats = false;
  for (const QTextFrame* frame : letter.rootFrame()->childFrames()) {
    const auto* table = qobject_cast<const QTextTable*>(frame);
    const int headers = table == nullptr ? 0 : table->format().headerRowCount();
    const bool isBehind = before != nullptr && table != nullptr && before->lastPosition() + 2 == table->firstPosition();
    if (isBehind && repeats && headers == 0) {
      seams.append(before->lastPosition() + 1);
    } else {
      repeats = headers > 0;
    }
    before = table;
  }
  return seams;
}

}  // namespace

PaperCopy CopyForPaper(const QTextDocument& letter) {
  if (const QList<int> seams = SeamsOf(letter); !seams.isEmpty()) {
    auto whole = std::make_unique<QTextDocument>();
    whole->setDefaultFont(letter.defaultFont());
    rtf::Limits limits;
    limits.tableCells = std::numeric_limits<int>::max() / 2;
    rtf::Read(rtf::Write(letter), *whole, limits);
    // Tables with other edges stay apart.
    if (whole->characterCount() + seams.size() == letter.characterCount()) {
      return {std::move(whole), seams};
    }
  }
  return {std::unique_ptr<QTextDocument>(letter.clone()), {}};
}

}  // namespace documents
