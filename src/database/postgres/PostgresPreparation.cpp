#include "database/postgres/PostgresPreparation.h"

#include "database/engine/EngineConnection.h"
#include "database/engine/Preparation.h"
#include "database/postgres/PostgresDdl.h"
#include "database/postgres/PostgresErrors.h"
#include "database/postgres/PostgresPresence.h"
#include "database/postgres/PostgresSession.h"
#include "platform/adodb/ErrorNumbers.h"

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
    LockForPreparation(Handle());
    return ReadState(Handle());
  }

  void Create(const Schema& schema) const override {
    Handle().Run(FoundationStatements());
    Handle().Run(PresenceStatement());
    RunAll(Handle(), 0, schema);
    Handle().Run("CREATE TABLE kelmotor (nombre text PRIMARY KEY, valor text NOT NULL)");
    Handle().Run("INSERT INTO kelmotor VALUES ('version', '" + QByteArray::number(schema.Version()) + "')");
  }

  // A program that works on the old version would be cut off in the middle.
  void Migrate(const Schema& schema, int fromVersion) const override {
    if (const QStringList others = OtherPresences(Handle()); !others.isEmpty()) {
      throw automation::Error(adodb::DatabaseLocked,
                              u"La base de datos «%1» es de una versión anterior, y no se puede actualizar mientras la "
                              "usan otros: %2. Espere a que cierren el programa y vuelva a intentarlo."_s.arg(
                                  ShownName(), others.join(u", "_s)));
    }
    constexpr int firstWithPresences = 5;
    if (fromVersion < firstWithPresences) {
      Handle().Run(PresenceStatement());
    }
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

bool MayWritePostgres(const ConnectionString& target) {
  return PostgresHandle(target).Value(
             "SELECT current_setting('transaction_read_only') = 'off' AND coalesce(bool_or(has_table_privilege(oid, "
             "'INSERT')), true) FROM pg_class WHERE relnamespace = to_regnamespace('kel') AND relkind = 'r'") == "t";
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
