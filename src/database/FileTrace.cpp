#include "database/FileTrace.h"

#include "database/Place.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace database {

namespace {

// A file that is not there has a trace, too.
QByteArray TraceOf(const QByteArray& file) {
  struct stat found = {};
  if (stat(file.constData(), &found) != 0) {
    return "-"_ba;
  }
  return QByteArray::number(found.st_ino) + ' ' + QByteArray::number(found.st_size) + ' ' +
         QByteArray::number(found.st_mtim.tv_sec) + '.' + QByteArray::number(found.st_mtim.tv_nsec);
}

}  // namespace

FileTrace::FileTrace(const QString& connectionString) {
  const Place place = PlaceOf(connectionString);
  if (place.IsFile()) {
    // The log stands beside the file itself, not beside a link to it.
    const QString real = QFileInfo(place.file).canonicalFilePath();
    m_files = {QFile::encodeName(place.file), QFile::encodeName((real.isEmpty() ? place.file : real) + u"-wal"_s)};
  }
}

bool FileTrace::HasMoved() {
  QByteArray now;
  for (const QByteArray& file : std::as_const(m_files)) {
    now += TraceOf(file) + '/';
  }
  return m_files.isEmpty() || std::exchange(m_seen, now) != now;
}

}  // namespace database
