#include "moving/ImportReport.h"

#include "platform/text/Counted.h"

#include <QFileInfo>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace moving {

namespace {

// Of a table, in the text; a window shows them all.
constexpr qsizetype mostLines = 1000;
constexpr qsizetype mostFindings = 20'000;

QString Row(const TableReport& table) {
  const QString counts = u"%1 leídos %2 nuevos %3 ya estaban %4 no entran"_s.arg(texts::Grouped(table.read), 9)
                             .arg(texts::Grouped(table.created), 9)
                             .arg(texts::Grouped(table.known), 9)
                             .arg(texts::Grouped(table.leftOut), 7);
  const QString name = table.there == table.here ? table.here : u"%1 (%2)"_s.arg(table.here, table.there);
  return u"  %1 %2\n"_s.arg(name, -30).arg(counts);
}

QStringList Findings(const TableReport& table) {
  QStringList lines;
  qint64 more = table.moreFindings;
  for (const Finding& finding : table.findings) {
    if (lines.size() < mostLines) {
      lines += finding.Line();
    } else {
      ++more;
    }
  }
  if (more > 0) {
    lines += u"y %1 más"_s.arg(texts::Grouped(more));
  }
  return lines;
}

QString Details(const TableReport& table) {
  QStringList lines;
  const auto count = [&lines](qint64 number, const QString& text) {
    if (number > 0) {
      lines += text.arg(texts::Grouped(number));
    }
  };
  count(table.missing, u"faltan %1 registros que el archivo dice tener"_s);
  count(table.revived, u"%1 estaban eliminados aquí y vuelven a estar"_s);
  count(table.changed, u"%1 de los que ya estaban cambian"_s);
  count(table.differing, u"%1 de los que ya estaban tienen aquí otros valores, que se quedan"_s);
  count(table.skipped, u"%1 eliminados, que nadie usa, no se traen"_s);
  if (!table.leftColumns.isEmpty()) {
    lines += u"columnas que no se traen: %1"_s.arg(table.leftColumns.join(u", "_s));
  }
  if (table.firstNumber > 0) {
    lines += u"números nuevos desde el %1"_s.arg(table.firstNumber);
  }
  for (auto at = table.remarks.begin(); at != table.remarks.end(); ++at) {
    lines += u"%1 (%2)"_s.arg(at.key(), texts::Grouped(at.value()));
  }
  lines += Findings(table);
  return lines.isEmpty() ? QString() : u"      "_s + lines.join(u"\n      "_s) + u'\n';
}

}  // namespace

QString Finding::Line() const {
  const QString line = u"%1%2: %3"_s.arg(name, label.isEmpty() ? QString() : u" (%1)"_s.arg(label), what);
  const QString whole = here.isEmpty() ? line : u"%1; aquí, %2"_s.arg(line, here);
  return IsQuestion() ? u"%1; %2 [%3=%4]"_s.arg(whole, choices[answer].text, question, choices[answer].word) : whole;
}

void TableReport::Add(Finding finding) {
  if (findings.size() < mostFindings) {
    findings.append(std::move(finding));
  } else {
    ++moreFindings;
  }
}

qint64 ImportReport::Sum(qint64 TableReport::*count) const {
  return std::accumulate(tables.begin(), tables.end(), qint64(0),
                         [count](qint64 sum, const TableReport& table) { return sum + table.*count; });
}

qint64 ImportReport::Written() const {
  return Sum(&TableReport::created) + Sum(&TableReport::changed) + Sum(&TableReport::revived);
}

qint64 ImportReport::Questions() const {
  return std::accumulate(tables.begin(), tables.end(), qint64(0), [](qint64 sum, const TableReport& table) {
    return sum + std::ranges::count_if(table.findings, &Finding::IsQuestion);
  });
}

bool ImportReport::HasLosses() const {
  return !unreadable.isEmpty() || std::any_of(tables.begin(), tables.end(), [](const TableReport& table) {
    return !table.here.isEmpty() && table.leftOut + table.missing > 0;
  });
}

QString ImportReport::Text() const {
  QString text =
      u"%1: %2, %3, %4. %5\n"_s.arg(QFileInfo(file).fileName(), texts::Counted(tables.size(), u"tabla"_s, u"tablas"_s),
                                    texts::Counted(Sum(&TableReport::read), u"registro leído"_s, u"registros leídos"_s),
                                    texts::Counted(Sum(&TableReport::created), u"nuevo"_s, u"nuevos"_s),
                                    isWritten ? u"Se han traído."_s : u"No se ha escrito nada."_s);
  text += u"SHA-256 %1\n"_s.arg(digest);
  for (const QString& warning : warnings) {
    text += warning + u'\n';
  }
  for (const TableReport& table : tables) {
    text += table.here.isEmpty()
                ? u"  %1 no entra: %2 (%3)\n"_s.arg(table.there, table.why,
                                                    texts::Counted(table.read, u"registro"_s, u"registros"_s))
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
