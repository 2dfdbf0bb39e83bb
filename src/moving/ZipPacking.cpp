#include "moving/ZipPacking.h"

#include <zip.h>

#include <unistd.h>
#include <array>
#include <cstdio>
#include <memory>

namespace moving {

namespace {

struct SourceEnd {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Source = std::unique_ptr<zip_source_t, SourceEnd>;

struct ArchiveEnd {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, ArchiveEnd>;

zip_source_t* SourceOf(zip_t* archive, const ZipPart& part) {
  if (part.file == nullptr) {
    return zip_source_buffer(archive, part.content.constData(), zip_uint64_t(part.content.size()), 0);
  }
  const int descriptor = dup(part.file->handle());
  FILE* stream = descriptor < 0 ? nullptr : fdopen(descriptor, "rb");
  if (stream == nullptr) {
    return nullptr;
  }
  std::rewind(stream);
  zip_source_t* source = zip_source_filep(archive, stream, 0, -1);
  if (source == nullptr) {
    fclose(stream);
  }
  return source;
}

bool Add(zip_t* archive, const ZipPart& part) {
  Source source(SourceOf(archive, part));
  const zip_int64_t index =
      source ? zip_file_add(archive, part.name.constData(), source.get(), ZIP_FL_ENC_UTF_8) : zip_int64_t(-1);
  if (index < 0) {
    return false;
  }
  source.release();
  const zip_int32_t method = part.isCompressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
  return zip_set_file_compression(archive, zip_uint64_t(index), method, 1) == 0;
}

bool Copy(zip_source_t* source, QIODevice& output) {
  if (zip_source_open(source) != 0) {
    return false;
  }
  std::array<char, 65536> bytes = {};
  zip_int64_t read = 0;
  while ((read = zip_source_read(source, bytes.data(), bytes.size())) > 0) {
    if (output.write(bytes.data(), read) != read) {
      read = -1;
      break;
    }
  }
  zip_source_close(source);
  return read == 0;
}

}  // namespace

bool Pack(const std::vector<ZipPart>& parts, QIODevice& output) {
  const Source packed(zip_source_buffer_create(nullptr, 0, 0, nullptr));
  if (!packed) {
    return false;
  }
  // The archive takes a share of what it writes to.
  zip_source_keep(packed.get());
  Archive archive(zip_open_from_source(packed.get(), ZIP_TRUNCATE, nullptr));
  if (!archive) {
    zip_source_free(packed.get());
    return false;
  }
  for (const ZipPart& part : parts) {
    if (!Add(archive.get(), part)) {
      return false;
    }
  }
  if (zip_close(archive.get()) != 0) {
    return false;
  }
  archive.release();
  return Copy(packed.get(), output);
}

}  // namespace moving
