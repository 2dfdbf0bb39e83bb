#include "support/TrapFile.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <sys/inotify.h>
#include <unistd.h>
#include <array>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace support {

TrapFile::TrapFile()
    : m_path(QDir::tempPath() + u"/trap-"_s + QUuid::createUuid().toString(QUuid::Id128) + u".xpm"_s),
      m_watch(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  QFile file(m_path);
  const bool made = file.open(QFile::WriteOnly) &&
                    file.write("/* XPM */ static char* x[] = {\"1 1 1 1\", \"a c red\", \"a\"};") > 0 && file.flush();
  file.close();
  if (!made || inotify_add_watch(m_watch, QFile::encodeName(m_path).constData(), IN_OPEN) < 0) {
    throw std::runtime_error("no file to be watched");
  }
}

TrapFile::~TrapFile() {
  close(m_watch);
  QFile::remove(m_path);
}

QString TrapFile::Name() const {
  return u"<img src=\"%1\"><a href=\"%1\">x</a>"_s.arg(m_path);
}

bool TrapFile::WasOpened() {
  std::array<char, 4096> events{};
  bool opened = false;
  while (read(m_watch, events.data(), events.size()) > 0) {
    opened = true;
  }
  return opened;
}

}  // namespace support
