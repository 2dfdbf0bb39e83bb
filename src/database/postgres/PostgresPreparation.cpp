#include "database/postgres/PostgresPreparation.h"

#include "database/engine/EngineConnection.h"
#include "database/engine/Preparation.h"
#include "database/postgres/PostgresDdl.h"
#include "database/postgres/PostgresErrors.h"
#include "database/postgres/PostgresPresence.h"
#include "database/postgres/PostgresRights.h"
#include "database/postgres/PostgresSession.h"
#include "platform/adodb/ErrorNumbers.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

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
    return StateOf(Handle());
  }

  void Create(const Schema& schema) const override {
    ActAsOwner(Handle());
    MakeTables(Handle(), schema, "kel");
    GrantRights(Handle(), "kel");
  }

  // A program that works on the old version would be cut off in the middle.
  void Migrate(const Schema& schema, int fromVersion) const override {
    if (const QStringList others = OtherPresences(Handle()); !others.isEmpty()) {
      throw automation::Error(adodb::DatabaseLocked,
                              u"La base de datos «%1» es de una versión anterior, y no se puede actualizar mientras la "
                              "usan otros: %2. Espere a que cierren el programa y vuelva a intentarlo."_s.arg(
                                  ShownName(), others.join(u", "_s)));
    }
    ActAsOwner(Handle());
    constexpr int firstWithPresences = 5;
    if (fromVersion < firstWithPresences) {
      Handle().Run(PresenceStatement());
    }
    RunAll(Handle(), fromVersion, schema);
    GrantRights(Handle(), "kel");
    Handle().Run("UPDATE kelmotor SET valor = '" + QByteArray::number(schema.Version()) + "' WHERE nombre = 'version'");
  }

 private:
  const PostgresHandle& Handle() const { return m_session.InTransaction(); }

  PostgresSession& m_session;
};

// The server's library of rules (ICU) was replaced. Only the owner can do something about the indexes.
QString OtherRules(const PostgresHandle& handle) {
  const QString text = u"el servidor ordena ahora los textos por otras reglas; %1 «kel-host preparar --base ...»"_s;
  return text.arg(MayDefine(handle) ? u"cierre el programa en todos los equipos y ejecute"_s
                                    : u"espere a que quien la administra ejecute"_s);
}

// Every index on texts, hash indexes too, holds what the old rules made of them.
void RebuildIndexes(const PostgresHandle& handle) {
  handle.Run(handle.Value("SELECT string_agg(format('REINDEX TABLE kel.%I', relname), ';') FROM pg_class WHERE "
                          "relkind = 'r' AND relnamespace = 'kel'::regnamespace") +
             "; ALTER COLLATION kel.kel_es REFRESH VERSION");
}

}  // namespace

int VersionOf(const PostgresHandle& handle) {
  return handle.Value("SELECT valor FROM kel.kelmotor WHERE nombre = 'version'").toInt();
}

// Another program may make everything between two of these questions; asked in this order, the answers fit then, too.
DatabaseState StateOf(const PostgresHandle& handle) {
  DatabaseState state;
  state.isEmpty = handle.Value("SELECT count(*) FROM pg_class WHERE relnamespace = to_regnamespace('kel')") == "0";
  state.isOurs = !handle.Value("SELECT to_regclass('kel.kelmotor')").isNull();
  if (state.isOurs) {
    state.version = VersionOf(handle);
  }
  return state;
}

void MakeTables(const PostgresHandle& handle, const Schema& schema, const QByteArray& schemaName) {
  handle.Run(FoundationStatements(schemaName));
  handle.Run(PresenceStatement());
  RunAll(handle, 0, schema);
  handle.Run("CREATE TABLE kelmotor (nombre text PRIMARY KEY, valor text NOT NULL)");
  handle.Run("INSERT INTO kelmotor VALUES ('version', '" + QByteArray::number(schema.Version()) + "')");
}

bool HasCurrentCollation(const PostgresHandle& handle) {
  return handle.Value(
             "SELECT collversion = pg_collation_actual_version(oid) FROM pg_collation WHERE oid = "
             "'kel.kel_es'::regcollation") != "f";
}

void RequireCurrentDatabase(const PostgresHandle& handle) {
  const DatabaseState state = StateOf(handle);
  RefuseForeign(state, handle.Target().ShownName());
  if (state.version < SchemaVersion()) {
    throw OlderDatabaseError(handle.Target().ShownName());
  }
  if (!HasCurrentCollation(handle)) {
    throw UnusableServer(handle.Target(), OtherRules(handle));
  }
}

bool MayWritePostgres(const ConnectionString& target) {
  return PostgresHandle(target).Value(
             "SELECT current_setting('transaction_read_only') = 'off' AND coalesce(bool_or(has_table_privilege(oid, "
             "'INSERT')), true) FROM pg_class WHERE relnamespace = to_regnamespace('kel') AND relkind = 'r'") == "t";
}

void PreparePostgres(const ConnectionString& target, Content content) {
  PostgresHandle handle(target);
  const DatabaseState state = StateOf(handle);
  RefuseForeign(state, target.ShownName());
  if (state.version == SchemaVersion()) {
    return;
  }
  if (target.ReadOnly()) {
    throw OlderDatabaseError(target.ShownName());
  }
  if (!MayDefine(handle)) {
    throw automation::Error(adodb::OlderDatabase,
                            u"La base de datos «%1» está vacía o es de una versión anterior del programa. Quien la "
                            "administra debe prepararla con «kel-host preparar --base ...»."_s.arg(target.ShownName()));
  }
  auto owned = std::make_unique<PostgresSession>(std::move(handle));
  PostgresSession& session = *owned;
  EngineConnection connection(std::move(owned), target);
  BringUpToDate(connection, PreparedServer(session), content);
  session.Handle().Run("ANALYZE");
}

ServerSetUp SetUpPostgres(const ConnectionString& target, Content content) {
  ServerSetUp done;
  const PostgresHandle handle(target);
  RefuseForeign(StateOf(handle), target.ShownName());
  handle.Run("BEGIN");
  MakeGroups(handle);
  handle.Run("COMMIT");
  PreparePostgres(target, content);
  handle.Run("BEGIN");
  LockForPreparation(handle);
  GiveToOwners(handle, "kel");
  ActAsOwner(handle);
  GrantRights(handle, "kel");
  if (!HasCurrentCollation(handle)) {
    RebuildIndexes(handle);
    done.rebuiltIndexes = true;
  }
  handle.Run("COMMIT");
  done.groups = GroupNames(handle);
  return done;
}

}  // namespace database
