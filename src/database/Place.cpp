#include "database/Place.h"

#include "database/Engines.h"

#include <QFileInfo>

namespace database {

Place PlaceOf(const QString& connectionString) {
  const ConnectionString target = TargetOf(connectionString);
  if (target.File().isEmpty()) {
    return {target.ShownName(), {}};
  }
  const QString file = QFileInfo(target.File()).absoluteFilePath();
  return {file, file};
}

}  // namespace database
