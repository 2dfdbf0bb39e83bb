#pragma once

#include <QList>

#include <memory>

class QTextDocument;

namespace documents {

/// A copy of a letter for paper. Where a long table is several of them in the letter, it is one in the copy, so that
/// its header rows are repeated on all of its pages.
struct PaperCopy {
  std::unique_ptr<QTextDocument> letter;
  /// Places of the letter, ascending, that the copy lacks; what is behind them stands one place further in front.
  QList<int> seams;
};

PaperCopy CopyForPaper(const QTextDocument& letter);

}  // namespace documents
