#include "support/SmallDisk.h"

#include <QFile>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>
#include <array>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace support {

namespace {

constexpr const char* size = "size=8m,mode=0700";
const QString filling = u"filling"_s;

}  // namespace

// Threads that exist already go on seeing the disk that was there; those made later see this one.
SmallDisk::SmallDisk()
    : m_isThere(unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                mount("tmpfs", QFile::encodeName(m_folder.path()).constData(), "tmpfs", 0, size) == 0) {}

SmallDisk::~SmallDisk() {
  if (m_isThere) {
    umount2(QFile::encodeName(m_folder.path()).constData(), MNT_DETACH);
  }
}

void SmallDisk::Fill() const {
  const int file = open(QFile::encodeName(Path(filling)).constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  const std::array<char, 4096> page{};
  while (write(file, page.data(), page.size()) > 0) {
  }
  close(file);
}

void SmallDisk::Free() const {
  QFile::remove(Path(filling));
}

void SmallDisk::CloseToWriting() const {
  if (mount(nullptr, QFile::encodeName(m_folder.path()).constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
    throw std::runtime_error("the disk can't be closed to writing");
  }
}

}  // namespace support
