#pragma once

#include <QString>

namespace texts {

/// "1 carta", "0 cartas", "12.345 cartas": `count` as Spaniards write it, before its noun.
QString Counted(qint64 count, const QString& one, const QString& several);

}  // namespace texts
