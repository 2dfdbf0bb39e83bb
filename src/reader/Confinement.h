#pragma once

#include <cstddef>

namespace reader {

/// The file on the standard input, in memory.
struct MappedFile {
  unsigned char* bytes = nullptr;
  std::size_t size = 0;
};

/// Maps the standard input and takes from this process everything that reading does not need: other files, processes,
/// the network, the growth of any file, and memory, time and privileges beyond the usual. From then on a forbidden call
/// ends it (seccomp(2), setrlimit(2)). Without bytes where the input is no file, is empty, or something of this could
/// not be had; nothing may be read then. Under the sanitizers, which need more, only the file is mapped.
MappedFile MapAndConfine();

}  // namespace reader
