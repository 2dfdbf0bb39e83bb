#include "host/cli/PrintedTable.h"

#include <QTextStream>

#include <algorithm>

namespace host {

void PrintTable(const QList<QStringList>& table) {
  QList<qsizetype> widths(table.constFirst().size());
  for (const QStringList& row : table) {
    for (qsizetype column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], row[column].size());
    }
  }
  QTextStream out(stdout);
  for (const QStringList& row : table) {
    QString line;
    for (qsizetype column = 0; column < row.size(); ++column) {
      line += row[column].leftJustified(widths[column] + 2);
    }
    out << line.trimmed() << '\n';
  }
}

}  // namespace host
