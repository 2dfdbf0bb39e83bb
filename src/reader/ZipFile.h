#pragma once

#include "reader/Confinement.h"

#include <QIODevice>

#include <memory>

struct zip;
struct zip_file;

namespace reader {

/// A zip file in memory.
class ZipFile {
 public:
  explicit ZipFile(const MappedFile& file);
  ~ZipFile();
  ZipFile(const ZipFile&) = delete;
  ZipFile& operator=(const ZipFile&) = delete;

  bool IsOne() const { return m_zip != nullptr; }
  bool Has(const char* part) const;
  /// The part, to be read once from its beginning; nullptr where there is none. It belongs to this file.
  std::unique_ptr<QIODevice> Open(const QByteArray& part) const;

 private:
  zip* m_zip = nullptr;
};

}  // namespace reader
