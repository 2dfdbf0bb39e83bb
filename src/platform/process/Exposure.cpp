#include "platform/process/Exposure.h"

#include <QByteArrayList>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

#include <climits>

using namespace Qt::StringLiterals;

namespace process {

namespace {

bool IsTrusted(uid_t owner) {
  return owner == 0 || owner == geteuid();
}

QString Closing(const QByteArray& path, uid_t owner) {
  return (owner == geteuid() ? u"chmod o-w "_s : u"sudo chmod o-w "_s) + ForShell(QFile::decodeName(path));
}

QString OpenFolder(const QByteArray& folder, uid_t owner) {
  return u"Cualquier cuenta de este equipo puede cambiar lo que hay en la carpeta «%1». Ciérrela con esta orden y "
         u"vuelva a intentarlo: %2"_s.arg(QFile::decodeName(folder), Closing(folder, owner));
}

QString OpenFile(const QByteArray& file, uid_t owner) {
  return u"Cualquier cuenta de este equipo puede cambiar el archivo «%1». Ciérrelo con esta orden y vuelva a "
         u"intentarlo: %2"_s.arg(QFile::decodeName(file), Closing(file, owner));
}

QString Foreign(const QByteArray& entry) {
  return u"«%1» es de otra cuenta y está en una carpeta en la que puede escribir cualquiera. Use otra carpeta."_s.arg(
      QFile::decodeName(entry));
}

// Why the entry may be somebody else's doing. `folder` has no links in it; `entry` is null where it is not there.
QString ExposureOfEntry(const QByteArray& folder, const QByteArray& path, const struct stat* entry) {
  struct stat status = {};
  if (stat(folder.constData(), &status) != 0 || (status.st_mode & S_IWOTH) == 0) {
    return {};
  }
  if ((status.st_mode & S_ISVTX) == 0 || !IsTrusted(status.st_uid)) {
    return OpenFolder(folder, status.st_uid);
  }
  return entry != nullptr && !IsTrusted(entry->st_uid) ? Foreign(path) : QString();
}

QString ExposureOfFile(const QByteArray& file, const struct stat& status) {
  return S_ISREG(status.st_mode) && (status.st_mode & S_IWOTH) != 0 ? OpenFile(file, status.st_uid) : QString();
}

QByteArray TargetOf(const QByteArray& link) {
  QByteArray target(PATH_MAX, '\0');
  target.resize(qMax(ssize_t(0), readlink(link.constData(), target.data(), size_t(target.size()))));
  return target;
}

QByteArray Parent(const QByteArray& path) {
  return path.left(qMax(qsizetype(1), path.lastIndexOf('/')));
}

}  // namespace

QString ExposureOf(const QString& path) {
  // As many as the kernel follows.
  constexpr int mostLinks = 40;
  QByteArrayList pending = QFile::encodeName(QFileInfo(path).absoluteFilePath()).split('/');
  QByteArray place = "/";
  for (int links = 0; !pending.isEmpty() && links <= mostLinks;) {
    const QByteArray name = pending.takeFirst();
    if (name.isEmpty() || name == ".") {
      continue;
    }
    if (name == "..") {
      place = Parent(place);
      continue;
    }
    const QByteArray entry = (place == "/" ? place : place + '/') + name;
    struct stat status = {};
    const bool isThere = lstat(entry.constData(), &status) == 0;
    QString exposure = ExposureOfEntry(place, entry, isThere ? &status : nullptr);
    if (!isThere || !exposure.isEmpty()) {
      return exposure;
    }
    if (S_ISLNK(status.st_mode)) {
      ++links;
      const QByteArray target = TargetOf(entry);
      place = target.startsWith('/') ? "/" : place;
      pending = target.split('/') + pending;
      continue;
    }
    exposure = ExposureOfFile(entry, status);
    if (!exposure.isEmpty()) {
      return exposure;
    }
    place = entry;
  }
  return ExposureOfEntry(place, place, nullptr);
}

QString ForShell(QString text) {
  return u'\'' + text.replace(u'\'', u"'\\''"_s) + u'\'';
}

}  // namespace process
