#include "database/engine/Preparation.h"

#include "database/seed/Seed.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace database {

using automation::Error;

void RefuseForeign(const DatabaseState& state, const QString& shownName) {
  if (state.isOurs && state.version > SchemaVersion()) {
    throw Error(adodb::NewerDatabase,
                u"La base de datos «%1» es de una versión más nueva del programa (%2; esta "
                "llega hasta la %3). No se ha tocado. Actualice el programa."_s.arg(
                    shownName, QString::number(state.version), QString::number(SchemaVersion())));
  }
  const bool isNew = state.isEmpty && state.version == 0;
  if (!state.isOurs && !isNew) {
    throw Error(adodb::NotOurDatabase,
                u"«%1» es una base de datos de otro programa. No se ha tocado. Elija otra."_s.arg(shownName));
  }
}

Error OlderDatabaseError(const QString& shownName) {
  return Error(adodb::OlderDatabase,
               u"La base de datos «%1» está vacía o es de una versión anterior del "
               "programa. Ábrala con permiso de escritura para actualizarla."_s.arg(shownName));
}

namespace {

// Tells this database from every other one, wherever its file goes: what programs remember of it hangs on that.
void GiveIdentity(adodb::Connection& connection) {
  adodb::Execute(connection, u"UPDATE configuracion SET Identidad='{}' WHERE Identidad IS NULL",
                 QUuid::createUuid().toString(QUuid::WithoutBraces));
}

}  // namespace

void BringUpToDate(adodb::Connection& connection, const PreparedDatabase& database, Content content) {
  adodb::Transaction transaction(connection);
  // Another program may have done it while this one waited for the lock.
  const DatabaseState state = database.State();
  RefuseForeign(state, database.ShownName());
  const Schema& schema = Schema::Current();
  if (state.isEmpty) {
    database.Create(schema);
    SeedReference(connection);
    if (content == Content::Demonstration) {
      SeedDemonstration(connection);
    }
  } else if (state.version < schema.Version()) {
    database.Migrate(schema, state.version);
    SeedWhatIsNew(connection, state.version);
  }
  GiveIdentity(connection);
  transaction.Commit();
}

}  // namespace database
