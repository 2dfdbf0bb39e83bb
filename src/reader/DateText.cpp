#include "reader/DateText.h"

#include <QDateTime>

#include <cmath>

namespace reader {

QByteArray DateText(double days) {
  constexpr double first = -657'434;
  constexpr double last = 2'958'466;
  if (!(days >= first && days < last)) {
    return {};
  }
  constexpr qint64 secondsOfADay = 86'400;
  const double whole = std::trunc(days);
  const auto seconds = qint64(std::llround(std::fabs(days - whole) * secondsOfADay));
  const QDate date = QDate(1899, 12, 30).addDays(qint64(whole) + seconds / secondsOfADay);
  const QTime time = QTime(0, 0).addSecs(int(seconds % secondsOfADay));
  const QString text = date.toString(Qt::ISODate);
  return (time == QTime(0, 0) ? text : text + u'T' + time.toString(Qt::ISODate)).toUtf8();
}

}  // namespace reader
