#include "documents/people/SpanishDates.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace documents {

QString ShortDate(QDate date) {
  return date.toString(u"dd/MM/yyyy"_s);
}

QString DateAndTime(const QDateTime& moment) {
  return moment.toString(u"dd/MM/yyyy HH:mm"_s);
}

QString LongDate(QDate date) {
  return QLocale(QLocale::Spanish, QLocale::Spain).toString(date, u"dddd, d 'de' MMMM 'de' yyyy"_s);
}

QDate DateIn(const QString& text) {
  const QString trimmed = text.trimmed();
  const QDate stored = QDate::fromString(trimmed, Qt::ISODate);
  return stored.isValid() ? stored : QDate::fromString(trimmed, u"d/M/yyyy"_s);
}

}  // namespace documents
