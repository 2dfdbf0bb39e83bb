#pragma once

#include <QByteArray>

#include <memory>

namespace host {

/// Takes pages out of a PDF. What they use goes along, and streams stay as they are: nothing is painted or compressed
/// anew.
class PdfCutter {
 public:
  /// The content must outlive the object. Raises 5 for what is no PDF.
  explicit PdfCutter(const QByteArray& whole);
  ~PdfCutter();

  /// The pages from `first` up to `end`, from 0, as a file of their own.
  QByteArray Pages(int first, int end) const;

 private:
  class File;

  std::unique_ptr<File> m_whole;
};

}  // namespace host
