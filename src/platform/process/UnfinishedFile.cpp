#include "platform/process/UnfinishedFile.h"

#include "platform/process/Exposure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace process {

namespace {

constexpr mode_t writableByOthers = S_IWGRP | S_IWOTH;
const QString prefix = u".kel-"_s;

// 32 hexadecimal digits.
QByteArray Unguessable() {
  std::array<quint32, 4> numbers = {};
  QRandomGenerator::system()->fillRange(numbers.data(), qsizetype(numbers.size()));
  return QByteArray(reinterpret_cast<const char*>(numbers.data()), sizeof numbers).toHex();
}

bool IsOwnName(const QString& name) {
  static const QRegularExpression form(u"^[0-9a-f]{32}(-[a-z]+)?$"_s);
  return form.match(name).hasMatch();
}

// The superuser's files belong to somebody else on some disks.
bool IsOwn(const struct stat& status) {
  return status.st_uid == geteuid() || geteuid() == 0;
}

// Through the descriptor, since another folder may have taken the name by now; -1 for a folder that is not ours alone.
int OpenOwn(const QByteArray& path) {
  const int place = open(path.constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  struct stat status = {};
  int folder = -1;
  if (place >= 0 && fstat(place, &status) == 0 && IsOwn(status) && (status.st_mode & writableByOthers) == 0) {
    // The mask may have taken rights from the owner, too. A folder of a group hands the group on.
    chmod(("/proc/self/fd/" + QByteArray::number(place)).constData(), (status.st_mode & S_ISGID) | S_IRWXU);
    folder = openat(place, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  }
  if (place >= 0) {
    close(place);
  }
  return folder;
}

// Not everywhere can folders be locked; there nothing that was left is removed.
bool Lock(int folder) {
  return flock(folder, LOCK_EX | LOCK_NB) == 0;
}

bool IsRemoved(int folder) {
  struct stat status = {};
  return fstat(folder, &status) != 0 || status.st_nlink == 0;
}

bool CreateFile(int folder, const QByteArray& name) {
  const int file =
      openat(folder, name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
  struct stat status = {};
  const bool isOwn = file >= 0 && fchmod(file, S_IRUSR | S_IWUSR) == 0 && fstat(file, &status) == 0 && IsOwn(status) &&
                     (status.st_mode & writableByOthers) == 0;
  if (file >= 0) {
    close(file);
  }
  return isOwn;
}

// Only what the name says is ours: a folder of the user's that somebody gave such a name keeps its files.
void Remove(int folder, const QByteArray& path) {
  if (DIR* entries = fdopendir(folder)) {
    while (const dirent* entry = readdir(entries)) {
      if (IsOwnName(QFile::decodeName(entry->d_name))) {
        unlinkat(dirfd(entries), entry->d_name, 0);
      }
    }
    rmdir(path.constData());
    closedir(entries);
  }
}

void RemoveAbandoned(const QString& place) {
  const QStringList names = QDir(place).entryList({prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
  for (const QString& name : names) {
    const QByteArray path = QFile::encodeName(place + u'/' + name);
    const int folder = IsOwnName(name.mid(prefix.size())) ? OpenOwn(path) : -1;
    if (folder >= 0 && Lock(folder)) {
      Remove(folder, path);
    } else if (folder >= 0) {
      close(folder);
    }
  }
}

}  // namespace

UnfinishedFile::UnfinishedFile(const QString& target) : m_target(QFile::encodeName(target)) {
  const QString place = QFileInfo(target).absolutePath();
  RemoveAbandoned(place);
  // Another program may take a folder for abandoned until it is locked.
  constexpr int mostTries = 3;
  for (int i = 0; i < mostTries && !IsValid(); ++i) {
    m_folderPath = QFile::encodeName(place + u'/' + prefix) + Unguessable();
    Make();
  }
}

void UnfinishedFile::Make() {
  if (mkdir(m_folderPath.constData(), S_IRWXU) != 0) {
    return;
  }
  const int folder = OpenOwn(m_folderPath);
  if (folder < 0) {
    return;
  }
  m_name = Unguessable();
  const bool isTaken = !Lock(folder) && errno == EWOULDBLOCK;
  if (!isTaken && !IsRemoved(folder) && CreateFile(folder, m_name)) {
    m_folder = folder;
  } else {
    Remove(folder, m_folderPath);
  }
}

bool UnfinishedFile::Next(const QString& target) {
  unlinkat(m_folder, m_name.constData(), 0);
  m_target = QFile::encodeName(target);
  m_name = Unguessable();
  return CreateFile(m_folder, m_name);
}

UnfinishedFile::~UnfinishedFile() {
  if (IsValid()) {
    Remove(m_folder, m_folderPath);
  }
}

QString UnfinishedFile::Path() const {
  return QFile::decodeName(m_folderPath + '/' + m_name);
}

bool UnfinishedFile::TakeRightsOf(const QString& file) const {
  struct stat model = {};
  struct stat own = {};
  if (!ExposureOf(file).isEmpty()) {
    return true;
  }
  if (stat(QFile::encodeName(file).constData(), &model) != 0) {
    return false;
  }
  // Where the group can't be kept, what it may do is not handed to another one.
  const bool isGroupKept = fchownat(m_folder, m_name.constData(), static_cast<uid_t>(-1), model.st_gid, 0) == 0 ||
                           (fstatat(m_folder, m_name.constData(), &own, 0) == 0 && own.st_gid == model.st_gid);
  const mode_t taken = S_IRWXU | S_IRWXO | (isGroupKept ? S_IRWXG : 0);
  return fchmodat(m_folder, m_name.constData(), model.st_mode & taken, 0) == 0;
}

// Who may write in the target's folder may exchange ours while its path is used.
bool UnfinishedFile::IsAtItsPath() const {
  struct stat own = {};
  struct stat found = {};
  return fstatat(m_folder, m_name.constData(), &own, AT_SYMLINK_NOFOLLOW) == 0 &&
         lstat((m_folderPath + '/' + m_name).constData(), &found) == 0 && own.st_dev == found.st_dev &&
         own.st_ino == found.st_ino;
}

bool UnfinishedFile::Place(Existing existing) const {
  if (!IsAtItsPath()) {
    return false;
  }
  if (existing == Existing::Replace) {
    return renameat(m_folder, m_name.constData(), AT_FDCWD, m_target.constData()) == 0;
  }
  // Not every disk can do the first; none that can't lacks the second.
  return renameat2(m_folder, m_name.constData(), AT_FDCWD, m_target.constData(), RENAME_NOREPLACE) == 0 ||
         (errno == EINVAL && linkat(m_folder, m_name.constData(), AT_FDCWD, m_target.constData(), 0) == 0);
}

}  // namespace process
