#include "database/Place.h"

#include "database/Engines.h"

#include <QFileInfo>

namespace database {

Place PlaceOf(const QString& connectionString) {
  const ConnectionString target = TargetOf(connectionString);
  const QString& file = target.File();
  return {target.ShownName(), file.isEmpty() ? QString() : QFileInfo(file).absoluteFilePath()};
}

}  // namespace database
