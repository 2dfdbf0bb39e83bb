#pragma once

#include "database/Maintenance.h"

#include <QDate>
#include <QString>

namespace host {

/// Whether the user wants copies: the setting `Copias/Diaria` of the application, which is on unless it is `false`.
bool WantsDailyCopies();

/// Copies the database into the folder `copias` beside its file, unless there is a copy of `today` already, and then
/// deletes the daily copies that are two weeks old. The errors of CopyDatabase leave it; nothing is deleted after one.
void MakeDailyCopy(const QString& connectionString, QDate today, const database::Stop& stop);

}  // namespace host
