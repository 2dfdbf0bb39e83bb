#include "resources/StringTable.h"

#include "platform/automation/Error.h"

#include <QFile>
#include <QHash>
#include <QStringTokenizer>

// The resource initialiser is a function of the global namespace.
static void InitialiseResources() {
  Q_INIT_RESOURCE(strings);
}

namespace resources {
namespace {

using Table = QHash<int, QString>;

void AddLine(Table& table, QStringView line) {
  const qsizetype tab = line.indexOf(u'\t');
  const QStringView quoted = line.sliced(tab + 1);
  QString text = quoted.sliced(1, quoted.size() - 2).toString();
  text.replace(QStringLiteral("\"\""), QStringLiteral("\""));
  table.insert(line.first(tab).toInt(), text);
}

Table ReadTable() {
  InitialiseResources();
  QFile file(QStringLiteral(":/kel/strings.tsv"));
  if (!file.open(QIODevice::ReadOnly)) {
    throw automation::Error(automation::ResourceNotFound,
                            QStringLiteral("Este programa no contiene su tabla de textos; vuelva a instalarlo."));
  }
  const QString content = QString::fromUtf8(file.readAll());
  Table table;
  for (const QStringView line : qTokenize(content, u'\n', Qt::SkipEmptyParts)) {
    AddLine(table, line);
  }
  return table;
}

}  // namespace

QString LoadResString(int id) {
  static const Table table = ReadTable();
  const auto found = table.constFind(id);
  if (found == table.cend()) {
    throw automation::Error(automation::ResourceNotFound,
                            QStringLiteral("No se encontró el recurso con el identificador '%1'").arg(id));
  }
  return *found;
}

}  // namespace resources
