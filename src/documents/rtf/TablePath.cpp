#include "documents/rtf/TablePath.h"

#include "documents/rtf/Properties.h"

#include <QStringList>

namespace rtf {

void SetPath(QTextBlockFormat& format, const TablePath& path) {
  QString places;
  QStringList definitions;
  for (const TableLevel& level : path) {
    places += QStringLiteral("%1,%2,%3|").arg(level.row).arg(level.cell).arg(qHash(level.definition));
    definitions.append(level.definition);
  }
  format.setProperty(TableProperty, places);
  format.setProperty(TableDefinitionsProperty, definitions);
}

TablePath PathOf(const QTextBlockFormat& format) {
  TablePath path;
  const QString places = format.stringProperty(TableProperty);
  const QStringList definitions = format.property(TableDefinitionsProperty).toStringList();
  const auto levels = QStringView(places).split(u'|', Qt::SkipEmptyParts);
  for (qsizetype i = 0; i < levels.size() && i < definitions.size(); ++i) {
    const auto fields = levels[i].split(u',');
    path.append({fields.value(0).toInt(), fields.value(1).toInt(), definitions[i]});
  }
  return path;
}

}  // namespace rtf
