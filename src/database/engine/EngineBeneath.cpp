#include "database/engine/EngineBeneath.h"

#include "database/ConnectionLayer.h"
#include "database/engine/EngineConnection.h"

namespace database {

EngineConnection* EngineBeneath(adodb::Connection& connection) {
  adodb::Connection* beneath = &connection;
  while (const auto* layer = dynamic_cast<const ConnectionLayer*>(beneath)) {
    beneath = &layer->Beneath();
  }
  return dynamic_cast<EngineConnection*>(beneath);
}

}  // namespace database
