#pragma once

#include "database/Maintenance.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

namespace host {

/// Whether the user wants copies: the setting `Copias/Diaria` of the application, which is on unless it is `false`. It
/// holds for this user of this machine.
bool WantsDailyCopies();
void WantDailyCopies(bool wanted);

/// Copies the database into the folder `copias` beside its file, unless there is a copy of `today` already, and then
/// deletes the daily copies that are so many days old. The errors of CopyDatabase leave it; nothing is deleted after
/// one.
void MakeDailyCopy(const QString& connectionString, QDate today, int daysKept, const database::Stop& stop);

/// A file that can take the place of the database.
struct CopyFile {
  QString path;
  QDateTime moment;  ///< Of its last change.
  qint64 bytes = 0;
};

/// The folder of the daily copies; empty for a database on a server.
QString CopiesFolder(const QString& connectionString);

/// The copies in that folder, and what restorings kept beside the database; the youngest first. None for a server.
QList<CopyFile> CopiesOf(const QString& connectionString);

}  // namespace host
