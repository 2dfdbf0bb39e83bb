#include "letters/editor/RecoveryFile.h"

#include "platform/process/PrivateFiles.h"

#include <QDir>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

const QString timeForm = u"yyyyMMdd-HHmmss-zzz"_s;

QString Folder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Kel/cartas"_s;
}

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
  return Rescued{.file = Folder() + u'/' + fileName,
                 .record = match.captured(2).toInt(),
                 .name = match.captured(3),
                 .when = QDateTime::fromString(match.captured(1), timeForm)};
}

}  // namespace

bool Rescue(const QByteArray& content, qint32 record, const QString& name) {
  const QString folder = Folder();
  if (!process::TakePrivateFolder(folder)) {
    return false;
  }
  QSaveFile file(folder + u'/' + FileName(record, name));
  return file.open(QFile::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
         file.write(content) == content.size() && file.commit();
}

std::optional<Rescued> FindRescued(qint32 record) {
  if (!process::IsOwnFolder(Folder())) {
    return std::nullopt;
  }
  const QStringList newestFirst =
      QDir(Folder()).entryList({u"* carta *.rtf"_s}, QDir::Files, QDir::Name | QDir::Reversed);
  for (const QString& fileName : newestFirst) {
    const std::optional<Rescued> letter = Parse(fileName);
    if (letter && (record == 0 || letter->record == record)) {
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

}  // namespace letters
