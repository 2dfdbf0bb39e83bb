#include "database/seed/Invented.h"

using namespace Qt::StringLiterals;

namespace database {

QString Invented::Date() {
  const int year = 2015 + Number(10);
  const int month = 1 + Number(12);
  const int day = 1 + Number(28);
  return u"%1-%2-%3"_s.arg(year).arg(month, 2, 10, QLatin1Char('0')).arg(day, 2, 10, QLatin1Char('0'));
}

// The check letter is the number's remainder by 23 (Real Decreto 1553/2005).
QString Invented::Nif() {
  constexpr QStringView letters = u"TRWAGMYFPDXBNJZSQVHLCKE";
  const int number = 99000000 + Number(999999);
  return QString::number(number) + letters[number % letters.size()];
}

}  // namespace database
