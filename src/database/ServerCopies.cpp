#include "database/ServerCopies.h"

#include "database/postgres/PostgresTransfer.h"
#include "database/sqlite/SqliteCopy.h"

namespace database {

CopySize CopyFromServer(const ConnectionString& server, const QString& file, const Stop& stop) {
  return MakeSqlite(
      file,
      [&](const TransferTarget& target) {
        ReadPostgres(server, [&](const TransferSource& source) { CarryRows(source, target, stop); });
      },
      stop);
}

QString RestoreToServer(const ConnectionString& copy, const ConnectionString& server) {
  QString kept;
  ReadSqlite(copy, [&](const TransferSource& source) { kept = RestorePostgres(server, source); });
  return kept;
}

}  // namespace database
