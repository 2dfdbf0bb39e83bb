#pragma once

#include <QByteArray>
#include <QIODevice>

#include <memory>

namespace host {

/// Takes pages out of a PDF. What they use goes along, and streams stay as they are: nothing is painted or compressed
/// anew.
class PdfCutter {
 public:
  /// The content must outlive the object. Raises 5 for what is no PDF.
  explicit PdfCutter(const QByteArray& whole);
  ~PdfCutter();

  /// Writes the pages from `first` up to `end`, from 0, as a file of their own.
  void WritePages(int first, int end, QIODevice& file) const;

 private:
  class File;

  std::unique_ptr<File> m_whole;
};

}  // namespace host
