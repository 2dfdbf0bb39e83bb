#include "database/Announcement.h"

#include "database/engine/EngineBeneath.h"
#include "database/engine/EngineConnection.h"

namespace database {

Announcement::Announcement(adodb::Connection& connection, const QStringList& statements, End end)
    : m_connection(connection) {
  if (EngineConnection* engine = EngineBeneath(connection)) {
    engine->Announce(statements, end == End::Commit);
  }
}

Announcement::~Announcement() {
  if (EngineConnection* engine = EngineBeneath(m_connection)) {
    engine->Announce({}, false);
  }
}

}  // namespace database
