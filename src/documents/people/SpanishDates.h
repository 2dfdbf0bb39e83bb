#pragma once

#include "documents/Export.h"

#include <QDateTime>
#include <QString>

/// Dates as Spanish letters write them.
namespace documents {

/// "21/11/2026"
KELDOCUMENTOS_EXPORT QString ShortDate(QDate date);
/// "21/11/2026 09:05"
KELDOCUMENTOS_EXPORT QString DateAndTime(const QDateTime& moment);
/// "sábado, 21 de noviembre de 2026"
KELDOCUMENTOS_EXPORT QString LongDate(QDate date);

/// The date that a text means, as databases keep it (2026-11-21) or as people write it (21/11/2026); an invalid one for
/// a text that is no date.
KELDOCUMENTOS_EXPORT QDate DateIn(const QString& text);

}  // namespace documents
