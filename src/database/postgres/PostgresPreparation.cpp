#include "database/postgres/PostgresPreparation.h"

#include "database/engine/EngineConnection.h"
#include "database/engine/Preparation.h"
#include "database/postgres/PostgresDdl.h"
#include "database/postgres/PostgresErrors.h"
#include "database/postgres/PostgresSession.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

// Another program may make everything between two of these questions; asked in this order, the answers fit then, too.
DatabaseState ReadState(const PostgresHandle& handle) {
  DatabaseState state;
  state.isEmpty = handle.Value("SELECT count(*) FROM pg_class WHERE relnamespace = to_regnamespace('kel')") == "0";
  state.isOurs = !handle.Value("SELECT to_regclass('kel.kelmotor')").isNull();
  if (state.isOurs) {
    state.version = VersionOf(handle);
  }
  return state;
}

void RunAll(const PostgresHandle& handle, int fromVersion, const Schema& schema) {
  for (const QByteArray& statement : SchemaStatements(PostgresDdl(), schema, fromVersion, schema.Version())) {
    handle.Run(statement);
  }
}

class PreparedServer : public PreparedDatabase {
 public:
  explicit PreparedServer(PostgresSession& session) : m_session(session) {}

  QString ShownName() const override { return Handle().Target().ShownName(); }

  // BEGIN waits for the first statement of the layer's; this is the first of all.
  DatabaseState State() const override {
    Handle().Run("SELECT pg_advisory_xact_lock(x'4B454C31'::int)");
    return ReadState(Handle());
  }

  void Create(const Schema& schema) const override {
    Handle().Run(FoundationStatements());
    RunAll(Handle(), 0, schema);
    Handle().Run("CREATE TABLE kelmotor (nombre text PRIMARY KEY, valor text NOT NULL)");
    Handle().Run("INSERT INTO kelmotor VALUES ('version', '" + QByteArray::number(schema.Version()) + "')");
  }

  void Migrate(const Schema& schema, int fromVersion) const override {
    RunAll(Handle(), fromVersion, schema);
    Handle().Run("UPDATE kelmotor SET valor = '" + QByteArray::number(schema.Version()) + "' WHERE nombre = 'version'");
  }

 private:
  const PostgresHandle& Handle() const { return m_session.InTransaction(); }

  PostgresSession& m_session;
};

}  // namespace

int VersionOf(const PostgresHandle& handle) {
  return handle.Value("SELECT valor FROM kel.kelmotor WHERE nombre = 'version'").toInt();
}

void RequireCurrentDatabase(const PostgresHandle& handle) {
  const DatabaseState state = ReadState(handle);
  RefuseForeign(state, handle.Target().ShownName());
  if (state.version < SchemaVersion()) {
    throw OlderDatabaseError(handle.Target().ShownName());
  }
  if (handle.Value("SELECT collversion = pg_collation_actual_version(oid) FROM pg_collation WHERE oid = "
                   "'kel.kel_es'::regcollation") == "f") {
    throw UnusableServer(
        handle.Target(),
        u"el servidor ordena ahora los textos por otras reglas; quien lo administra debe ejecutar REINDEX "
        "SCHEMA kel y después ALTER COLLATION kel.kel_es REFRESH VERSION"_s);
  }
}

void PreparePostgres(const ConnectionString& target, Content content) {
  PostgresHandle handle(target);
  const DatabaseState state = ReadState(handle);
  RefuseForeign(state, target.ShownName());
  if (state.version == SchemaVersion()) {
    return;
  }
  if (target.ReadOnly()) {
    throw OlderDatabaseError(target.ShownName());
  }
  auto owned = std::make_unique<PostgresSession>(std::move(handle));
  PostgresSession& session = *owned;
  EngineConnection connection(std::move(owned), target);
  BringUpToDate(connection, PreparedServer(session), content);
  session.Handle().Run("ANALYZE");
}

}  // namespace database
