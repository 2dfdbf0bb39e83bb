#include "moving/ImportReport.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

QString Number(qint64 number) {
  return QLocale(QLocale::Spanish, QLocale::Spain).toString(number);
}

QString Row(const TableReport& table) {
  const QString counts = u"%1 leídos %2 nuevos %3 ya estaban %4 no entran"_s.arg(Number(table.read), 9)
                             .arg(Number(table.created), 9)
                             .arg(Number(table.known), 9)
                             .arg(Number(table.leftOut), 7);
  const QString name = table.there == table.here ? table.here : u"%1 (%2)"_s.arg(table.here, table.there);
  return u"  %1 %2\n"_s.arg(name, -30).arg(counts);
}

QString Details(const TableReport& table) {
  QStringList lines;
  if (table.missing > 0) {
    lines += u"faltan %1 registros que el archivo dice tener"_s.arg(Number(table.missing));
  }
  if (table.revived > 0) {
    lines += u"%1 estaban eliminados aquí y vuelven a estar"_s.arg(Number(table.revived));
  }
  if (table.firstNumber > 0) {
    lines += u"números nuevos desde el %1"_s.arg(table.firstNumber);
  }
  for (auto at = table.remarks.begin(); at != table.remarks.end(); ++at) {
    lines += u"%1 (%2)"_s.arg(at.key(), Number(at.value()));
  }
  lines += table.lines;
  if (table.moreLines > 0) {
    lines += u"y %1 más"_s.arg(Number(table.moreLines));
  }
  return lines.isEmpty() ? QString() : u"      "_s + lines.join(u"\n      "_s) + u'\n';
}

}  // namespace

void TableReport::AddLine(const QString& line) {
  constexpr qsizetype most = 1000;
  if (lines.size() < most) {
    lines.append(line);
  } else {
    ++moreLines;
  }
}

qint64 ImportReport::Read() const {
  return std::accumulate(tables.begin(), tables.end(), qint64(0),
                         [](qint64 sum, const TableReport& table) { return sum + table.read; });
}

qint64 ImportReport::Created() const {
  return std::accumulate(tables.begin(), tables.end(), qint64(0),
                         [](qint64 sum, const TableReport& table) { return sum + table.created; });
}

bool ImportReport::HasLosses() const {
  return !unreadable.isEmpty() || std::any_of(tables.begin(), tables.end(), [](const TableReport& table) {
    return !table.here.isEmpty() && table.leftOut + table.missing > 0;
  });
}

QString ImportReport::Text() const {
  QString text = u"%1: %2 tablas, %3 registros leídos, %4 nuevos. %5\n"_s.arg(
      QFileInfo(file).fileName(), QString::number(tables.size()), Number(Read()), Number(Created()),
      isWritten ? u"Se han traído."_s : u"No se ha escrito nada."_s);
  text += u"SHA-256 %1\n"_s.arg(digest);
  for (const TableReport& table : tables) {
    text += table.here.isEmpty()
                ? u"  %1 no entra: %2 (%3 registros)\n"_s.arg(table.there, table.why, Number(table.read))
                : Row(table) + Details(table);
  }
  for (const QString& name : elsewhere) {
    text += u"  %1 está en otro archivo, y no se ha leído\n"_s.arg(name);
  }
  for (const QString& name : unreadable) {
    text += u"  %1 no se puede leer: su definición está dañada\n"_s.arg(name);
  }
  return text;
}

}  // namespace moving
