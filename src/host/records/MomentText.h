#pragma once

#include <QDateTime>
#include <QString>

namespace host {

/// A moment as a sentence says it, in local time: of today "las 13:03", of another day "el 20/11/2026 a las 13:03".
QString MomentText(const QDateTime& moment);

/// With the day in any case: "hoy a las 13:03".
QString DayAndTime(const QDateTime& moment);

}  // namespace host
