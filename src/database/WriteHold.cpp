#include "database/WriteHold.h"

#include "database/Schema.h"
#include "database/engine/EngineBeneath.h"
#include "database/engine/EngineConnection.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

namespace database {

using namespace Qt::StringLiterals;

void HoldWrites(adodb::Connection& connection, const QStringList& tables) {
  EngineConnection* engine = EngineBeneath(connection);
  if (engine == nullptr) {
    return;
  }
  std::vector<const Table*> held;
  for (const QString& name : tables) {
    const Table* table = Schema::Current().FindTable(name);
    if (table == nullptr) {
      throw automation::Error(adodb::NoSuchTable, u"No existe la tabla «%1»."_s.arg(name));
    }
    held.push_back(table);
  }
  engine->HoldWrites(held);
}

}  // namespace database
