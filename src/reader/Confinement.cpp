#include "reader/Confinement.h"

#include <QHashSeed>

#include <iconv.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <ctime>

namespace reader {

namespace {

// The whole of the machine's part in it: what is not here can't be asked of the system.
constexpr std::array calls = {SCMP_SYS(read),  SCMP_SYS(write),     SCMP_SYS(lseek),      SCMP_SYS(brk),
                              SCMP_SYS(mmap),  SCMP_SYS(munmap),    SCMP_SYS(mremap),     SCMP_SYS(madvise),
                              SCMP_SYS(futex), SCMP_SYS(fstat),     SCMP_SYS(newfstatat), SCMP_SYS(rt_sigreturn),
                              SCMP_SYS(exit),  SCMP_SYS(exit_group)};

bool SetLimit(__rlimit_resource_t what, rlim_t most) {
  const rlimit limit{most, most};
  return setrlimit(what, &limit) == 0;
}

bool SetLimits(std::size_t fileSize) {
  constexpr rlim_t memory = 256 << 20;
  constexpr rlim_t seconds = 60;
  return SetLimit(RLIMIT_AS, rlim_t(fileSize) + memory) && SetLimit(RLIMIT_CPU, seconds) && SetLimit(RLIMIT_FSIZE, 0) &&
         SetLimit(RLIMIT_CORE, 0) && SetLimit(RLIMIT_NPROC, 0);
}

bool SetFilter() {
  const scmp_filter_ctx filter = seccomp_init(SCMP_ACT_KILL_PROCESS);
  bool isSet = filter != nullptr;
  for (const int call : calls) {
    isSet = isSet && seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0;
  }
  // It takes away new privileges, too.
  isSet = isSet && seccomp_load(filter) == 0;
  seccomp_release(filter);
  return isSet;
}

// What opens files at its first use has it now.
bool LoadEarly() {
  // libzip makes the times of its parts local ones.
  setenv("TZ", "UTC0", 1);
  tzset();
  const bool hasTables = iconv_open("UTF-8", "UCS-2LE") != iconv_t(-1) && iconv_open("UTF-8", "CP1252") != iconv_t(-1);
  return hasTables && QHashSeed::globalSeed() != 0;
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isConfined = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool isConfined = false;
#else
constexpr bool isConfined = true;
#endif
#else
constexpr bool isConfined = true;
#endif

}  // namespace

MappedFile MapAndConfine() {
  close_range(STDERR_FILENO + 1, ~0U, 0);
  struct stat status = {};
  if (fstat(STDIN_FILENO, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0) {
    return {};
  }
  const auto size = std::size_t(status.st_size);
  void* bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, STDIN_FILENO, 0);
  if (bytes == MAP_FAILED || !LoadEarly() || (isConfined && !(SetLimits(size) && SetFilter()))) {
    return {};
  }
  return {static_cast<unsigned char*>(bytes), size};
}

}  // namespace reader
