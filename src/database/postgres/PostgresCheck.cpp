#include "database/postgres/PostgresCheck.h"

#include "database/engine/Check.h"
#include "database/engine/EngineConnection.h"
#include "database/postgres/PostgresPreparation.h"
#include "database/postgres/PostgresSession.h"
#include "database/postgres/PostgresTarget.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

QStringList Names(const PostgresHandle& handle, const QByteArray& relations) {
  const QByteArray names = handle.Value("SELECT string_agg(relname, '/' ORDER BY relname) FROM " + relations +
                                        " WHERE relnamespace = 'kel'::regnamespace");
  return QString::fromUtf8(names).split(u'/', Qt::SkipEmptyParts);
}

void CheckIndexes(const PostgresHandle& handle, Findings& findings) {
  for (const QString& index :
       Names(handle, "pg_class JOIN pg_index ON oid = indexrelid AND NOT (indisvalid AND indisready)")) {
    findings.indexes += u"El índice «%1» está a medio hacer."_s.arg(index);
  }
  if (!HasCurrentCollation(handle)) {
    findings.indexes +=
        u"Los índices de textos están hechos con otras reglas de orden: hay que ejecutar «kel-host preparar»."_s;
  }
}

// The server would give a key that a row has already.
void CheckKeys(const PostgresHandle& handle, const QStringList& present, Findings& findings) {
  for (const Table& table : Schema::Current().Tables()) {
    const QByteArray name = PostgresTarget::Instance().Name(table.name).toUtf8();
    const QByteArray key = table.columns.front().name.toLower().toUtf8();
    if (present.contains(table.name, Qt::CaseInsensitive) &&
        handle.Value("SELECT max(" + key + ") > coalesce(pg_sequence_last_value(pg_get_serial_sequence('" + name +
                     "', '" + key + "')::regclass), 0) FROM " + name) == "t") {
      findings.integrity +=
          u"Los números nuevos de la tabla %1 están ya en uso: su secuencia va atrasada."_s.arg(table.name);
    }
  }
}

}  // namespace

Findings CheckPostgres(const ConnectionString& target) {
  auto owned = std::make_unique<PostgresSession>(PostgresHandle(target));
  PostgresSession& session = *owned;
  EngineConnection connection(std::move(owned), target);
  const DatabaseState state = StateOf(session.Handle());
  RefuseForeign(state, target.ShownName());
  if (state.isEmpty) {
    throw OlderDatabaseError(target.ShownName());
  }
  Findings findings;
  try {
    const QStringList present = Names(session.Handle(), "pg_class");
    CheckIndexes(session.Handle(), findings);
    CheckKeys(session.Handle(), present, findings);
    CheckContents(connection, present, state.version, findings);
  } catch (const automation::Error& error) {
    // Where a damaged page ends the work, what was found so far is told, too.
    findings.integrity += error.Description();
  }
  return findings;
}

}  // namespace database
