#include "database/sqlite/SqliteCheck.h"

#include "database/Errors.h"
#include "database/engine/Check.h"
#include "database/engine/EngineText.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqlitePreparation.h"

#include <QRegularExpression>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr int mostFaults = 100;
constexpr int mostShown = 3;

QStringList Column0(const SqliteHandle& handle, const QByteArray& sql) {
  QStringList values;
  const SqliteStatement statement = handle.Prepare(sql);
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(statement.get())) == SQLITE_ROW) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
    values += TextFromEngine({text, static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), 0))});
  }
  handle.Check(code == SQLITE_DONE ? SQLITE_OK : code);
  return values;
}

// What the engine's checks say, empty for a sound file.
QStringList FaultsOf(const SqliteHandle& handle, const QByteArray& pragma) {
  QStringList faults = Column0(handle, "PRAGMA " + pragma + '(' + QByteArray::number(mostFaults) + ')');
  faults.removeAll(u"ok"_s);
  return faults;
}

bool IsOfIndex(const QString& fault) {
  return fault.contains(u"index"_s);
}

QString InSpanish(const QString& fault) {
  static const QRegularExpression missing(u"^row (\\d+) missing from index (.+)$"_s);
  static const QRegularExpression count(u"^wrong # of entries in index (.+)$"_s);
  static const QRegularExpression repeated(u"^non-unique entry in index (.+)$"_s);
  static const QRegularExpression empty(u"^NULL value in (.+)$"_s);
  if (const auto match = missing.match(fault); match.hasMatch()) {
    return u"En el índice «%2» falta la fila %1."_s.arg(match.captured(1), match.captured(2));
  }
  if (const auto match = count.match(fault); match.hasMatch()) {
    return u"El índice «%1» no tiene tantas entradas como filas su tabla."_s.arg(match.captured(1));
  }
  if (const auto match = repeated.match(fault); match.hasMatch()) {
    return u"En el índice «%1» hay una entrada repetida."_s.arg(match.captured(1));
  }
  if (const auto match = empty.match(fault); match.hasMatch()) {
    return u"Falta un valor obligatorio en «%1»."_s.arg(match.captured(1));
  }
  return u"El motor dice: %1"_s.arg(fault.simplified());
}

}  // namespace

void EndWhen(const SqliteHandle& handle, const Stop& stop) {
  constexpr int steps = 1000;
  if (stop) {
    const auto ask = [](void* asked) { return (*static_cast<const Stop*>(asked))() ? 1 : 0; };
    sqlite3_progress_handler(handle.Engine(), steps, ask, const_cast<Stop*>(&stop));
  }
}

void RequireSound(const SqliteHandle& handle) {
  RequireKnownDatabase(handle);
  const QStringList faults = FaultsOf(handle, "integrity_check");
  if (!faults.isEmpty()) {
    QStringList shown;
    for (const QString& fault : faults.first(std::min<qsizetype>(faults.size(), mostShown))) {
      shown += InSpanish(fault);
    }
    throw automation::Error(adodb::DatabaseDamaged,
                            u"La base de datos «%1» está dañada. %2"_s.arg(handle.Target().File(), shown.join(u' ')));
  }
}

Findings CheckSqlite(const ConnectionString& target) {
  SqliteConnection connection(SqliteHandle(target, SqliteHandle::Missing::Refuse));
  const SqliteHandle& handle = connection.Handle();
  RequireKnownDatabase(handle);
  Findings findings;
  try {
    for (const QString& fault : FaultsOf(handle, "integrity_check")) {
      (IsOfIndex(fault) ? findings.indexes : findings.integrity) += InSpanish(fault);
    }
    const QStringList present = Column0(handle, "SELECT name FROM sqlite_schema");
    const int version = handle.Value("PRAGMA user_version").toInt();
    CheckContents(connection, present, version, findings);
  } catch (const automation::Error& error) {
    // Where a damaged page ends the work, what was found so far is told, too.
    findings.integrity += error.Description();
  }
  return findings;
}

QStringList QuickCheckSqlite(const ConnectionString& target) {
  QStringList findings;
  try {
    const SqliteHandle handle(target, SqliteHandle::Missing::Refuse);
    for (const QString& fault : FaultsOf(handle, "quick_check")) {
      findings += InSpanish(fault);
    }
  } catch (const automation::Error& error) {
    findings += error.Description();
  }
  return findings;
}

}  // namespace database
