#include "database/seed/SeedTable.h"

#include "database/Errors.h"

#include <QFile>

static void InitializeResources() {
  Q_INIT_RESOURCE(semilla);
}

namespace database {

QString Quoted(const QString& text) {
  QString doubled = text;
  doubled.replace(u'\'', QStringLiteral("''"));
  return u'\'' + doubled + u'\'';
}

void InsertSeedFile(adodb::Connection& connection, const QString& table, const QString& fileName) {
  InitializeResources();
  QFile file(QStringLiteral(":/kel/semilla/") + fileName);
  if (!file.open(QIODevice::ReadOnly)) {
    throw BadSchema(0, QStringLiteral("falta el archivo de datos %1").arg(fileName));
  }
  QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
  const QStringList columns = lines.takeFirst().split(u'\t');
  const QString start = QStringLiteral("INSERT INTO %1 (%2) VALUES (").arg(table, columns.join(QStringLiteral(", ")));
  int number = 1;
  for (const QString& line : lines) {
    ++number;
    QStringList values = line.split(u'\t');
    if (values.size() != columns.size()) {
      throw BadSchema(number, QStringLiteral("sobran o faltan datos en %1").arg(fileName));
    }
    for (QString& value : values) {
      value = Quoted(value);
    }
    connection.Execute(start + values.join(u',') + u')');
  }
}

}  // namespace database
