#include "database/postgres/PostgresPresence.h"

#include "database/Schema.h"
#include "database/postgres/PostgresPreparation.h"

namespace database {

namespace {

// Advisory locks of two numbers are apart from those of one: the first is this program's, for either kind.
const QByteArray ours = "x'4B454C31'::int";

// In this database; every role may look.
QByteArray PresenceLocks() {
  return "pg_locks WHERE locktype = 'advisory' AND objsubid = 2 AND classid = " + ours +
         "::oid AND database = (SELECT oid FROM pg_database WHERE datname = current_database())";
}

}  // namespace

// Several statements without BEGIN are one transaction; the lock of the presence outlives it.
int TakePresence(const PostgresHandle& handle) {
  const QByteArray taken = handle.Value("SELECT pg_advisory_xact_lock_shared(" + ours +
                                        ");"
                                        "SELECT pg_advisory_lock(" +
                                        ours +
                                        ", nextval('kel.presencias')::int);"
                                        "SELECT currval('kel.presencias') || ' ' || valor FROM kel.kelmotor"
                                        " WHERE nombre = 'version'");
  const QList<QByteArray> numbers = taken.split(' ');
  if (numbers.last().toInt() != SchemaVersion()) {
    RequireCurrentDatabase(handle);
  }
  return numbers.first().toInt();
}

bool HasEnded(const PostgresHandle& handle, int presence) {
  return handle.Value("SELECT NOT EXISTS (SELECT FROM " + PresenceLocks() +
                      " AND objid = " + QByteArray::number(presence) +
                      "::oid) AND clock_timestamp() - pg_postmaster_start_time() >= "
                      "coalesce(nullif(current_setting('kel.gracia', true), ''), '30s')::interval") == "t";
}

void LockForPreparation(const PostgresHandle& handle) {
  handle.Run("SELECT pg_advisory_xact_lock(" + ours + ")");
}

QStringList OtherPresences(const PostgresHandle& handle) {
  const QByteArray names = handle.Value(
      "SELECT string_agg(DISTINCT regexp_replace(application_name, '^kel ', ''), E'\n') FROM pg_stat_activity"
      " WHERE pid <> pg_backend_pid() AND pid IN (SELECT pid FROM " +
      PresenceLocks() + ")");
  return QString::fromUtf8(names).split(u'\n', Qt::SkipEmptyParts);
}

}  // namespace database
