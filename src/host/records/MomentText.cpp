#include "host/records/MomentText.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool IsToday(const QDateTime& moment) {
  return moment.toLocalTime().date() == QDate::currentDate();
}

}  // namespace

QString MomentText(const QDateTime& moment) {
  const QDateTime local = moment.toLocalTime();
  const QString time = u"las "_s + local.toString(u"HH:mm"_s);
  return IsToday(moment) ? time : u"el %1 a %2"_s.arg(local.toString(u"dd/MM/yyyy"_s), time);
}

QString DayAndTime(const QDateTime& moment) {
  return IsToday(moment) ? u"hoy a "_s + MomentText(moment) : MomentText(moment);
}

}  // namespace host
