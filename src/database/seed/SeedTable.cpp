#include "database/seed/SeedTable.h"

#include "database/Errors.h"
#include "platform/adodb/Statement.h"

#include <QFile>

using namespace Qt::StringLiterals;

static void InitializeResources() {
  Q_INIT_RESOURCE(seed);
}

using adodb::Verbatim;

namespace database {

void InsertSeedFile(adodb::Connection& connection, const QString& folder, const QString& table) {
  InitializeResources();
  QFile file(u":/kel/seed/%1/%2.tsv"_s.arg(folder, table));
  if (!file.open(QIODevice::ReadOnly)) {
    throw BadSchema(0, u"falta el archivo de datos de %1"_s.arg(table));
  }
  QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
  const QStringList columns = lines.takeFirst().split(u'\t');
  int number = 1;
  for (const QString& line : lines) {
    ++number;
    QStringList values = line.split(u'\t');
    if (values.size() != columns.size()) {
      throw BadSchema(number, u"sobran o faltan datos en %1"_s.arg(table));
    }
    for (QString& value : values) {
      value = adodb::StatementText(u"'{}'", value);
    }
    adodb::Execute(connection, u"INSERT INTO {} ({}) VALUES ({})", Verbatim{table}, Verbatim{columns.join(u", ")},
                   Verbatim{values.join(u',')});
  }
}

}  // namespace database
