#include "database/seed/SeedTable.h"

#include "database/Errors.h"

#include <QFile>

using namespace Qt::StringLiterals;

static void InitializeResources() {
  Q_INIT_RESOURCE(semilla);
}

namespace database {

QString Quoted(const QString& text) {
  QString doubled = text;
  doubled.replace(u'\'', u"''"_s);
  return u'\'' + doubled + u'\'';
}

void InsertSeedFile(adodb::Connection& connection, const QString& table, const QString& fileName) {
  InitializeResources();
  QFile file(u":/kel/semilla/"_s + fileName);
  if (!file.open(QIODevice::ReadOnly)) {
    throw BadSchema(0, u"falta el archivo de datos %1"_s.arg(fileName));
  }
  QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
  const QStringList columns = lines.takeFirst().split(u'\t');
  const QString start = u"INSERT INTO %1 (%2) VALUES ("_s.arg(table, columns.join(u", "_s));
  int number = 1;
  for (const QString& line : lines) {
    ++number;
    QStringList values = line.split(u'\t');
    if (values.size() != columns.size()) {
      throw BadSchema(number, u"sobran o faltan datos en %1"_s.arg(fileName));
    }
    for (QString& value : values) {
      value = Quoted(value);
    }
    connection.Execute(start + values.join(u',') + u')');
  }
}

}  // namespace database
