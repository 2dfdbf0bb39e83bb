#include "letters/editor/RecoveryFile.h"

#include "platform/process/PrivateFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

const QString timeForm = u"yyyyMMdd-HHmmss-zzz"_s;

// "20260131-101530-250 carta 12 Nombre.rtf"
QString FileName(qint32 record, QString name) {
  static const QRegularExpression unfit(u"[^\\w .,()-]"_s, QRegularExpression::UseUnicodePropertiesOption);
  // As bytes a file name has 255 at most.
  constexpr qsizetype longestName = 50;
  name = name.remove(unfit).simplified().left(longestName);
  return u"%1 carta %2 %3.rtf"_s.arg(QDateTime::currentDateTime().toString(timeForm), QString::number(record), name);
}

std::optional<Rescued> Parse(const QString& fileName) {
  static const QRegularExpression form(u"^(\\d{8}-\\d{6}-\\d{3}) carta (-?\\d+) (.*)\\.rtf$"_s);
  const QRegularExpressionMatch match = form.match(fileName);
  if (!match.hasMatch()) {
    return std::nullopt;
  }
  return Rescued{.file = RescueFolder() + u'/' + fileName,
                 .record = match.captured(2).toInt(),
                 .name = match.captured(3),
                 .when = QDateTime::fromString(match.captured(1), timeForm)};
}

// A full disk may tell at any of these steps, the last ones included.
bool WriteWhole(QSaveFile& file, const QByteArray& content) {
  return file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && file.write(content) == content.size() &&
         file.flush() && fsync(file.handle()) == 0 && file.size() == content.size() && file.commit() &&
         QFileInfo(file.fileName()).size() == content.size();
}

// So that the name, too, outlives a power cut.
void SyncFolder(const QString& folder) {
  const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    fsync(descriptor);
    close(descriptor);
  }
}

bool IsInUse(const QString& file) {
  const int descriptor = open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
  if (descriptor < 0) {
    return false;
  }
  const bool isFree = flock(descriptor, LOCK_EX | LOCK_NB) == 0;
  close(descriptor);
  return !isFree;
}

}  // namespace

QString RescueFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Kel/cartas"_s;
}

std::optional<QString> Rescue(const QByteArray& content, qint32 record, const QString& name) {
  const QString folder = RescueFolder();
  if (!process::TakePrivateFolder(folder)) {
    return std::nullopt;
  }
  QSaveFile file(folder + u'/' + FileName(record, name));
  if (!file.open(QFile::WriteOnly)) {
    return std::nullopt;
  }
  if (!WriteWhole(file, content)) {
    return std::nullopt;
  }
  SyncFolder(folder);
  return file.fileName();
}

std::optional<Rescued> FindRescued(qint32 record) {
  if (!process::IsOwnFolder(RescueFolder())) {
    return std::nullopt;
  }
  const QStringList newestFirst =
      QDir(RescueFolder()).entryList({u"* carta *.rtf"_s}, QDir::Files, QDir::Name | QDir::Reversed);
  for (const QString& fileName : newestFirst) {
    const std::optional<Rescued> letter = Parse(fileName);
    if (letter && (record == 0 || letter->record == record) && !IsInUse(letter->file)) {
      return letter;
    }
  }
  return std::nullopt;
}

QByteArray ReadRescued(const Rescued& letter) {
  QFile file(letter.file);
  return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void Discard(const Rescued& letter) {
  QFile::remove(letter.file);
}

FileInUse::FileInUse(const QString& file)
    : m_path(file), m_descriptor(open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW)) {
  if (m_descriptor >= 0) {
    flock(m_descriptor, LOCK_EX | LOCK_NB);
  }
}

FileInUse::~FileInUse() {
  if (m_descriptor >= 0) {
    close(m_descriptor);
  }
}

}  // namespace letters
