#include "platform/process/PrivateFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace process {

namespace {

constexpr mode_t privateFolder = S_IRWXU;
constexpr mode_t privateFile = S_IRUSR | S_IWUSR;
constexpr mode_t others = S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

// Gives what the descriptor is of that mode, if it is the user's, and closes the descriptor. False for none.
bool Take(int descriptor, mode_t kind, mode_t mode) {
  struct stat status = {};
  const bool taken = descriptor >= 0 && fstat(descriptor, &status) == 0 && (status.st_mode & S_IFMT) == kind &&
                     status.st_uid == geteuid() && fchmod(descriptor, mode) == 0;
  if (descriptor >= 0) {
    close(descriptor);
  }
  return taken;
}

}  // namespace

bool CreatePrivateFolder(const QString& path) {
  const QString folder = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
  if (QFileInfo::exists(folder)) {
    return QFileInfo(folder).isDir();
  }
  if (!CreatePrivateFolder(QFileInfo(folder).absolutePath())) {
    return false;
  }
  const QByteArray name = QFile::encodeName(folder);
  if (mkdir(name.constData(), privateFolder) == 0) {
    // The mask may have taken rights from the owner, too.
    return chmod(name.constData(), privateFolder) == 0;
  }
  return QFileInfo(folder).isDir();
}

bool CreatePrivateFile(const QString& path) {
  const int file = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, privateFile);
  if (file < 0) {
    return QFileInfo(path).isFile();
  }
  const bool done = fchmod(file, privateFile) == 0;
  close(file);
  return done;
}

bool TakePrivateFolder(const QString& path) {
  return CreatePrivateFolder(path) &&
         Take(open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC), S_IFDIR,
              privateFolder);
}

bool TakePrivateFile(const QString& path) {
  return CreatePrivateFolder(QFileInfo(path).path()) && CreatePrivateFile(path) &&
         Take(open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC), S_IFREG,
              privateFile);
}

bool IsOwnFolder(const QString& path) {
  struct stat status = {};
  return lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool IsOpenToOthers(const QString& path) {
  struct stat status = {};
  return stat(QFile::encodeName(path).constData(), &status) == 0 && (status.st_mode & others) != 0;
}

bool MayWrite(const QString& path) {
  return faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK, AT_EACCESS) == 0;
}

}  // namespace process
