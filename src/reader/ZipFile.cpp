#include "reader/ZipFile.h"

#include <zip.h>

namespace reader {

namespace {

// A small file can unpack to anything.
constexpr qint64 mostUnpacked = qint64(1) << 30;

class ZipPart : public QIODevice {
 public:
  explicit ZipPart(zip_file_t* file) : m_file(file) { open(QIODevice::ReadOnly); }
  ~ZipPart() override { zip_fclose(m_file); }
  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* data, qint64 size) override {
    const zip_int64_t read = zip_fread(m_file, data, zip_uint64_t(size));
    m_unpacked += read;
    return m_unpacked > mostUnpacked ? -1 : read;
  }
  qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

 private:
  zip_file_t* m_file;
  qint64 m_unpacked = 0;
};

}  // namespace

ZipFile::ZipFile(const MappedFile& file) {
  if (zip_source_t* source = zip_source_buffer_create(file.bytes, file.size, 0, nullptr)) {
    m_zip = zip_open_from_source(source, ZIP_RDONLY, nullptr);
    if (m_zip == nullptr) {
      zip_source_free(source);
    }
  }
}

ZipFile::~ZipFile() {
  if (m_zip != nullptr) {
    zip_discard(m_zip);
  }
}

bool ZipFile::Has(const char* part) const {
  return zip_name_locate(m_zip, part, 0) >= 0;
}

std::unique_ptr<QIODevice> ZipFile::Open(const QByteArray& part) const {
  zip_file_t* file = zip_fopen(m_zip, part.constData(), 0);
  return file == nullptr ? nullptr : std::make_unique<ZipPart>(file);
}

}  // namespace reader
