#include "database/Snapshot.h"

#include "database/engine/EngineBeneath.h"
#include "database/engine/EngineConnection.h"

namespace database {

void BeginSnapshot(adodb::Connection& connection) {
  if (EngineConnection* engine = EngineBeneath(connection)) {
    engine->BeginSnapshot();
  } else {
    connection.BeginTrans();
  }
}

}  // namespace database
