#pragma once

#include <QString>

namespace texts {

/// "12.345": a whole number as Spaniards write it.
QString Grouped(qint64 number);

/// "1 carta", "0 cartas", "12.345 cartas": `count`, grouped, before its noun.
QString Counted(qint64 count, const QString& one, const QString& several);

}  // namespace texts
