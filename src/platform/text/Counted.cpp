#include "platform/text/Counted.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace texts {

QString Counted(qint64 count, const QString& one, const QString& several) {
  return QLocale(QLocale::Spanish, QLocale::Spain).toString(count) + u' ' + (count == 1 ? one : several);
}

}  // namespace texts
