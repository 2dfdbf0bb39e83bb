#include "database/postgres/PostgresRights.h"

#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace database {

namespace {

// The longest name that the server keeps whole.
constexpr qsizetype longestName = 63;

constexpr const char* groups[] = {"propietarios", "administradores", "usuarios", "lectores"};

QByteArray GroupName(const PostgresHandle& handle, const char* group) {
  return handle.Value("SELECT current_database()") + '_' + group;
}

QByteArray Quoted(QByteArray name, char quote) {
  return quote + name.replace(quote, QByteArray(2, quote)) + quote;
}

bool Exists(const PostgresHandle& handle, const QByteArray& role) {
  return !handle.Value("SELECT 1 FROM pg_roles WHERE rolname = " + Quoted(role, '\'')).isNull();
}

bool IsTrue(const PostgresHandle& handle, const QByteArray& condition) {
  return handle.Value("SELECT " + condition) == "t";
}

// Puts the names of database, schema and groups in the places of {base}, {kel}, {lectores}...
QByteArray Filled(const PostgresHandle& handle, QByteArray sql, const QByteArray& schemaName = {}) {
  sql.replace("{base}", Quoted(handle.Value("SELECT current_database()"), '"'));
  sql.replace("{kel}", schemaName);
  for (const char* group : groups) {
    sql.replace(QByteArray("{") + group + '}', Quoted(GroupName(handle, group), '"'));
  }
  return sql;
}

void RequireMayMakeGroups(const PostgresHandle& handle) {
  if (!IsTrue(handle,
              "rolsuper OR (rolcreaterole AND pg_has_role((SELECT datdba FROM pg_database WHERE datname = "
              "current_database()), 'USAGE')) FROM pg_roles WHERE rolname = current_user")) {
    throw automation::Error(
        adodb::DatabaseReadOnly,
        u"Para preparar la base de datos «%1» hace falta el usuario de PostgreSQL al que pertenece (OWNER), con "
        u"permiso "
        "para crear otros (CREATEROLE), o el administrador del servidor."_s.arg(handle.Target().ShownName()));
  }
}

}  // namespace

QStringList GroupNames(const PostgresHandle& handle) {
  QStringList names;
  for (const char* group : groups) {
    names += QString::fromUtf8(GroupName(handle, group));
  }
  return names;
}

void MakeGroups(const PostgresHandle& handle) {
  const auto isMissing = [&](const char* group) { return !Exists(handle, GroupName(handle, group)); };
  if (GroupName(handle, groups[1]).size() > longestName) {
    throw automation::Error(adodb::CannotOpen, u"El nombre de la base de datos «%1» es demasiado largo."_s.arg(
                                                   handle.Target().ShownName()));
  }
  if (std::ranges::none_of(groups, isMissing)) {
    return;
  }
  RequireMayMakeGroups(handle);
  for (const char* group : groups) {
    if (isMissing(group)) {
      handle.Run("CREATE ROLE " + Quoted(GroupName(handle, group), '"'));
    }
  }
  handle.Run(Filled(
      handle,
      "GRANT {lectores} TO {usuarios}; GRANT {usuarios} TO {administradores}; GRANT {propietarios} TO CURRENT_USER; "
      "GRANT CREATE ON DATABASE {base} TO {propietarios}"));
}

void ActAsOwner(const PostgresHandle& handle) {
  const QByteArray owners = GroupName(handle, "propietarios");
  if (Exists(handle, owners) && IsTrue(handle, "pg_has_role(" + Quoted(owners, '\'') + ", 'MEMBER')")) {
    handle.Run("SET LOCAL ROLE " + Quoted(owners, '"'));
  }
}

// The sequences of keys follow their tables.
void GiveToOwners(const PostgresHandle& handle, const QByteArray& schemaName) {
  const QByteArray statements = handle.Value(Filled(handle, R"sql(
SELECT string_agg(what || ' OWNER TO {propietarios}', ';') FROM (
  SELECT format('ALTER SCHEMA %I', nspname) FROM pg_namespace WHERE nspname = '{kel}'
  UNION ALL SELECT format('ALTER TABLE %s', oid::regclass) FROM pg_class
    WHERE relnamespace = '{kel}'::regnamespace AND (relkind = 'r' OR relname = 'presencias')
  UNION ALL SELECT format('ALTER FUNCTION %s', oid::regprocedure) FROM pg_proc WHERE pronamespace = '{kel}'::regnamespace
  UNION ALL SELECT format('ALTER COLLATION %s', oid::regcollation) FROM pg_collation
    WHERE collnamespace = '{kel}'::regnamespace) AS s(what))sql",
                                                    schemaName));
  handle.Run(statements);
}

// Keys given by hand need the right to set a sequence behind them.
void GrantRights(const PostgresHandle& handle, const QByteArray& schemaName) {
  if (!Exists(handle, GroupName(handle, "propietarios"))) {
    return;
  }
  handle.Run(Filled(handle, R"sql(
REVOKE ALL ON SCHEMA {kel} FROM PUBLIC;
REVOKE ALL ON ALL TABLES IN SCHEMA {kel} FROM PUBLIC, {lectores}, {usuarios}, {administradores};
REVOKE ALL ON ALL SEQUENCES IN SCHEMA {kel} FROM PUBLIC, {lectores}, {usuarios}, {administradores};
GRANT USAGE ON SCHEMA {kel} TO {lectores};
GRANT SELECT ON ALL TABLES IN SCHEMA {kel} TO {lectores};
GRANT SELECT ON ALL SEQUENCES IN SCHEMA {kel} TO {lectores};
GRANT INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA {kel} TO {usuarios};
GRANT USAGE, UPDATE ON ALL SEQUENCES IN SCHEMA {kel} TO {usuarios};
REVOKE UPDATE, DELETE ON {kel}.cambios FROM {usuarios};
REVOKE INSERT, UPDATE, DELETE ON {kel}.kelmotor, {kel}.usuarios, {kel}.ajustes FROM {usuarios};
GRANT INSERT, UPDATE, DELETE ON {kel}.usuarios, {kel}.ajustes TO {administradores})sql",
                    schemaName));
}

bool MayDefine(const PostgresHandle& handle) {
  return IsTrue(handle,
                "coalesce((SELECT pg_has_role(nspowner, 'USAGE') FROM pg_namespace WHERE nspname = 'kel'), "
                "has_database_privilege(current_database(), 'CREATE'))");
}

// By what the server lets a role do, however it came by that.
QList<ServerRole> RolesOn(const PostgresHandle& handle, bool onlyOwn) {
  QByteArrayList names;
  for (const char* group : groups) {
    names.append(Quoted(GroupName(handle, group), '\''));
  }
  const QByteArray who =
      onlyOwn ? "r.rolname = current_user" : "r.rolcanlogin AND has_table_privilege(r.oid, 'kel.bancos', 'SELECT')";
  QByteArray sql = R"sql(
SELECT json_agg(json_build_object('name', r.rolname, 'superuser', r.rolsuper, 'rights',
    CASE WHEN pg_has_role(r.oid, n.nspowner, 'USAGE') THEN 3
         WHEN has_table_privilege(r.oid, 'kel.usuarios', 'UPDATE') THEN 2
         WHEN has_table_privilege(r.oid, 'kel.bancos', 'UPDATE') THEN 1 ELSE 0 END,
    'group', (SELECT g.rolname FROM unnest(ARRAY[{groups}]) WITH ORDINALITY AS u(name, place)
              JOIN pg_roles g ON g.rolname = u.name
              WHERE pg_has_role(r.oid, g.oid, 'USAGE') ORDER BY place LIMIT 1)) ORDER BY r.rolname)
FROM pg_roles r JOIN pg_namespace n ON n.nspname = 'kel' WHERE )sql" +
                   who;
  sql.replace("{groups}", names.join(','));
  QList<ServerRole> roles;
  const QJsonArray rows = QJsonDocument::fromJson(handle.Value(sql)).array();
  for (const QJsonValue& row : rows) {
    roles.append({.name = row[u"name"].toString(),
                  .group = row[u"group"].toString(),
                  .rights = static_cast<RoleRights>(row[u"rights"].toInt()),
                  .isSuperuser = row[u"superuser"].toBool()});
  }
  return roles;
}

}  // namespace database
