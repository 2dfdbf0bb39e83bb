#pragma once

#include "documents/letter/Margins.h"

#include <QString>

namespace letters {

struct LetterWindow;

/// What leaves the editor: paper, its preview, a file.
class LetterOutput {
 public:
  explicit LetterOutput(LetterWindow& window) : m_window(window) {}

  /// Asks for the printer and prints. Errors of printing are not told; that is intended.
  void Print(const documents::Margins& margins, const QString& title) const;
  /// Shows the pages, and prints and saves from there.
  void Preview(const documents::Margins& margins, const QString& title) const;
  /// Asks for the file. A failure is told.
  void SavePdf(const documents::Margins& margins, const QString& title) const;

 private:
  LetterWindow& m_window;
};

}  // namespace letters
