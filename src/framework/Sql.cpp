#include "framework/Sql.h"

QString TextoSql(const QString& text) {
  return text.trimmed().replace(u'\'', QStringLiteral("''"));
}
