#include "platform/text/Counted.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace texts {

QString Grouped(qint64 number) {
  return QLocale(QLocale::Spanish, QLocale::Spain).toString(number);
}

QString Counted(qint64 count, const QString& one, const QString& several) {
  return Grouped(count) + u' ' + (count == 1 ? one : several);
}

}  // namespace texts
