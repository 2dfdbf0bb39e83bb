#include "database/Presence.h"

#include "database/engine/EngineBeneath.h"
#include "database/engine/EngineConnection.h"

namespace database {

int OwnPresence(adodb::Connection& connection) {
  EngineConnection* engine = EngineBeneath(connection);
  return engine == nullptr ? 0 : engine->Presence();
}

bool HasEnded(adodb::Connection& connection, int presence) {
  EngineConnection* engine = EngineBeneath(connection);
  return engine != nullptr && engine->HasEnded(presence);
}

void OnNewPresence(adodb::Connection& connection, CarryOver carryOver) {
  if (EngineConnection* engine = EngineBeneath(connection)) {
    engine->SetCarryOver(std::move(carryOver));
  }
}

}  // namespace database
