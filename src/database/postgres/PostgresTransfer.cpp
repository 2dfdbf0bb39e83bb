#include "database/postgres/PostgresTransfer.h"

#include "database/engine/EngineConnection.h"
#include "database/postgres/PostgresCopyIn.h"
#include "database/postgres/PostgresPreparation.h"
#include "database/postgres/PostgresPresence.h"
#include "database/postgres/PostgresRights.h"
#include "database/postgres/PostgresTarget.h"
#include "platform/adodb/ErrorNumbers.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace database {

namespace {

QByteArray NameOf(const QString& name) {
  return PostgresTarget::Instance().Name(name).toUtf8();
}

QByteArray SequenceOf(const Table& table) {
  return "pg_get_serial_sequence('" + NameOf(table.name) + "', '" + table.columns.front().name.toLower().toUtf8() +
         "')";
}

void RequireNobodyAtWork(const PostgresHandle& handle) {
  if (const QStringList others = OtherPresences(handle); !others.isEmpty()) {
    throw automation::Error(
        adodb::DatabaseLocked,
        u"Están trabajando con la base de datos «%1»: %2. Cierre el programa en todos los equipos "
        "y vuelva a intentarlo. No se ha cambiado nada."_s.arg(handle.Target().ShownName(), others.join(u", "_s)));
  }
}

// Whoever writes by other means ends first, or waits and then finds the new tables.
void LockTables(const PostgresHandle& handle) {
  handle.Run("LOCK TABLE " +
             handle.Value("SELECT string_agg(format('kel.%I', relname), ', ') FROM pg_class WHERE relkind = 'r' AND "
                          "relnamespace = 'kel'::regnamespace") +
             " IN ACCESS EXCLUSIVE MODE");
}

QByteArray KeptName(const PostgresHandle& handle) {
  const QByteArray name = "kel_antes_" + QDateTime::currentDateTime().toString(u"yyyyMMdd_HHmmss"_s).toLatin1();
  QByteArray free = name;
  for (int number = 2; !handle.Value("SELECT to_regnamespace('" + free + "')").isNull(); ++number) {
    free = name + '_' + QByteArray::number(number);
  }
  return free;
}

void RequireFree(const PostgresHandle& handle, const QByteArray& schemaName) {
  if (!handle.Value("SELECT to_regnamespace('" + schemaName + "')").isNull()) {
    throw automation::Error(adodb::NotOurDatabase,
                            u"En la base de datos «%1» ya hay un esquema «%2», que no es del programa. Quien la "
                            "administra debe cambiarle el nombre. No se ha cambiado nada."_s.arg(
                                handle.Target().ShownName(), QString::fromLatin1(schemaName)));
  }
}

// No presence begins until the transaction ends. A number of one is never given twice, whatever became of its tables.
QByteArray TakePlace(const PostgresHandle& handle) {
  LockTables(handle);
  handle.Run("SELECT setval('kel_nuevo.presencias', last_value, is_called) FROM kel.presencias");
  QByteArray kept = KeptName(handle);
  handle.Run("ALTER SCHEMA kel RENAME TO " + kept + "; ALTER SCHEMA kel_nuevo RENAME TO kel");
  return kept;
}

}  // namespace

qint64 PostgresTransfer::LastKey(const Table& table) const {
  return m_session.InTransaction()
      .Value("SELECT greatest(pg_sequence_last_value(" + SequenceOf(table) + "::regclass), max(" +
             NameOf(table.columns.front().name) + "), 0) FROM " + NameOf(table.name))
      .toLongLong();
}

std::unique_ptr<RowTaker> PostgresTransfer::Taker(const Table& table) const {
  return std::make_unique<PostgresCopyIn>(m_session.InTransaction(), table);
}

void PostgresTransfer::CountOnFrom(const Table& table, qint64 key) const {
  if (key > 0) {
    m_session.InTransaction().Run("SELECT setval(" + SequenceOf(table) + ", " + QByteArray::number(key) + ')');
  }
}

void ReadPostgres(const ConnectionString& target, const std::function<void(const TransferSource&)>& read) {
  auto owned = std::make_unique<PostgresSession>();
  PostgresSession& session = *owned;
  EngineConnection connection(std::move(owned), target);
  connection.Open();
  connection.BeginSnapshot();
  read(PostgresTransfer(session, connection));
}

QString RestorePostgres(const ConnectionString& target, const TransferSource& source) {
  auto owned = std::make_unique<PostgresSession>(PostgresHandle(target));
  PostgresSession& session = *owned;
  EngineConnection connection(std::move(owned), target);
  connection.BeginTrans();
  const PostgresHandle& handle = session.InTransaction();
  LockForPreparation(handle);
  const DatabaseState state = StateOf(handle);
  RefuseForeign(state, target.ShownName());
  ActAsOwner(handle);
  const QByteArray schemaName = state.isEmpty ? "kel" : "kel_nuevo";
  if (!state.isEmpty) {
    RequireNobodyAtWork(handle);
    RequireFree(handle, schemaName);
  }
  handle.Run("SET LOCAL search_path = " + schemaName + ", pg_catalog, pg_temp");
  MakeTables(handle, Schema::Current(), schemaName);
  CarryRows(source, PostgresTransfer(session, connection));
  GrantRights(handle, schemaName);
  const QByteArray kept = state.isEmpty ? QByteArray() : TakePlace(handle);
  connection.CommitTrans();
  session.Handle().Run("ANALYZE");
  return QString::fromLatin1(kept);
}

}  // namespace database
