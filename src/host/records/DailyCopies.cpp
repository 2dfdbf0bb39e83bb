#include "host/records/DailyCopies.h"

#include "database/Place.h"
#include "platform/automation/Error.h"
#include "platform/process/PrivateFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString copiesKey = u"Copias/Diaria"_s;

// Copies of `name` by the day in their names. Nothing else is touched.
void DeleteOldOnes(const QDir& folder, const QString& name, QDate today, int daysKept) {
  const QRegularExpression pattern(
      QRegularExpression::anchoredPattern(QRegularExpression::escape(name) + u"-(\\d{4}-\\d\\d-\\d\\d)\\.db"_s));
  const QStringList files = folder.entryList(QDir::Files);
  for (const QString& file : files) {
    const QDate day = QDate::fromString(pattern.match(file).captured(1), Qt::ISODate);
    if (day.isValid() && day.daysTo(today) >= daysKept) {
      QFile::remove(folder.filePath(file));
    }
  }
}

}  // namespace

bool WantsDailyCopies() {
  return QSettings().value(copiesKey, true).toBool();
}

void WantDailyCopies(bool wanted) {
  QSettings().setValue(copiesKey, wanted);
}

void MakeDailyCopy(const QString& connectionString, QDate today, int daysKept, const database::Stop& stop) {
  const QFileInfo file(database::PlaceOf(connectionString).file);
  const QDir folder(CopiesFolder(connectionString));
  const QString name = file.completeBaseName();
  const QString copy = folder.filePath(u"%1-%2.db"_s.arg(name, today.toString(Qt::ISODate)));
  process::CreatePrivateFolder(folder.path());
  if (!QFileInfo::exists(copy)) {
    try {
      database::CopyDatabase(connectionString, copy, stop);
    } catch (const automation::Error&) {
      // One that another program made, started at the same moment, is as good.
      if (!QFileInfo::exists(copy)) {
        throw;
      }
    }
  }
  DeleteOldOnes(folder, name, today, daysKept);
}

QString CopiesFolder(const QString& connectionString) {
  const QString file = database::PlaceOf(connectionString).file;
  return file.isEmpty() ? QString() : QFileInfo(file).dir().filePath(u"copias"_s);
}

QList<CopyFile> CopiesOf(const QString& connectionString) {
  const QFileInfo file(database::PlaceOf(connectionString).file);
  if (file.filePath().isEmpty()) {
    return {};
  }
  const QFileInfoList found = QDir(CopiesFolder(connectionString)).entryInfoList({u"*.db"_s}, QDir::Files) +
                              file.dir().entryInfoList({file.fileName() + u".antes-*"_s}, QDir::Files);
  QList<CopyFile> copies;
  for (const QFileInfo& each : found) {
    copies.append({each.filePath(), each.lastModified(), each.size()});
  }
  std::ranges::sort(copies, std::ranges::greater(), &CopyFile::moment);
  return copies;
}

}  // namespace host
