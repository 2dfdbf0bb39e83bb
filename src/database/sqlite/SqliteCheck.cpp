#include "database/sqlite/SqliteCheck.h"

#include "database/Errors.h"
#include "database/dialect/ExpressionWriter.h"
#include "database/sqlite/SqlitePreparation.h"
#include "database/sqlite/SqliteText.h"

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

QString Sentence(const QString& place, int count, const QString& one, const QString& many, const QString& first) {
  const QString rows = count == 1 ? one : u"%1 %2"_s.arg(QString::number(count), many);
  return u"%1: %2 (el primero, %3)."_s.arg(place, rows, first);
}

// "12|5": how many rows of the table meet the condition, and the key of the first; nothing where none does.
std::optional<std::pair<int, QString>> CountWhere(const SqliteHandle& handle, const Table& table, const QString& what) {
  const QString key = table.columns.front().name;
  const QByteArray counted = handle.Value(
      u"SELECT count(*) || '|' || min(%1) FROM %2 WHERE %3"_s.arg(QuotedName(key), QuotedName(table.name), what)
          .toUtf8());
  const int count = counted.left(counted.indexOf('|')).toInt();
  if (count == 0) {
    return std::nullopt;
  }
  return std::pair(count, u"%1 %2"_s.arg(key, QString::fromLatin1(counted.mid(counted.indexOf('|') + 1))));
}

void CheckReference(const SqliteHandle& handle, const Table& table, const Column& column, const Table& target,
                    QStringList& findings) {
  const QString live = table.FindColumn(u"Eliminado") == nullptr ? QString() : u"\"Eliminado\" = 0 AND "_s;
  const QString name = QuotedName(column.name);
  const auto lost = CountWhere(handle, table,
                               u"%1%2 <> 0 AND %2 NOT IN (SELECT %3 FROM %4)"_s.arg(
                                   live, name, QuotedName(target.columns.front().name), QuotedName(target.name)));
  if (lost) {
    const QString missing = u"a un registro de %1 que no existe"_s.arg(target.name);
    findings += Sentence(table.name + u'.' + column.name, lost->first, u"un registro apunta "_s + missing,
                         u"registros apuntan "_s + missing, lost->second);
  }
}

void CheckLength(const SqliteHandle& handle, const Table& table, const Column& column, QStringList& findings) {
  const auto longer =
      CountWhere(handle, table, u"length(%1) > %2"_s.arg(QuotedName(column.name), QString::number(column.length)));
  if (longer) {
    const QString most = u"más de %1 caracteres"_s.arg(column.length);
    findings += Sentence(table.name + u'.' + column.name, longer->first, u"un texto tiene "_s + most,
                         u"textos tienen "_s + most, longer->second);
  }
}

void CheckTable(const SqliteHandle& handle, const Table& table, const QStringList& present, int version,
                Findings& findings) {
  for (const Index& index : table.indexes) {
    if (index.since <= version && !present.contains(index.name, Qt::CaseInsensitive)) {
      findings.indexes += u"Falta el índice «%1» de la tabla %2."_s.arg(index.name, table.name);
    }
  }
  for (const Column& column : table.columns) {
    if (column.since > version) {
      continue;
    }
    const Table* target = ReferredTable(Schema::Current(), column);
    if (target != nullptr && present.contains(target->name, Qt::CaseInsensitive)) {
      CheckReference(handle, table, column, *target, findings.references);
    }
    if (column.length > 0) {
      CheckLength(handle, table, column, findings.lengths);
    }
  }
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
    throw automation::Error(DatabaseDamaged,
                            u"La base de datos «%1» está dañada. %2"_s.arg(handle.Target().File(), shown.join(u' ')));
  }
}

const Table* ReferredTable(const Schema& schema, const Column& column) {
  if (column.type != ColumnType::Id || !column.name.startsWith(u"Cod"_s, Qt::CaseInsensitive)) {
    return nullptr;
  }
  const QStringView what = QStringView(column.name).mid(3);
  const Table* beginning = nullptr;
  for (const Table& table : schema.Tables()) {
    const QStringView key = QStringView(table.columns.front().name).mid(2);
    if (key.compare(what, Qt::CaseInsensitive) == 0) {
      return &table;
    }
    if (what.startsWith(key, Qt::CaseInsensitive) ||
        key.compare(u"Tipo"_s + what.toString(), Qt::CaseInsensitive) == 0) {
      beginning = &table;
    }
  }
  return beginning;
}

Findings CheckSqlite(const ConnectionString& target) {
  const SqliteHandle handle(target, SqliteHandle::Missing::Refuse);
  RequireKnownDatabase(handle);
  Findings findings;
  try {
    for (const QString& fault : FaultsOf(handle, "integrity_check")) {
      (IsOfIndex(fault) ? findings.indexes : findings.integrity) += InSpanish(fault);
    }
    const QStringList present = Column0(handle, "SELECT name FROM sqlite_schema");
    const int version = handle.Value("PRAGMA user_version").toInt();
    for (const Table& table : Schema::Current().Tables()) {
      if (present.contains(table.name, Qt::CaseInsensitive)) {
        CheckTable(handle, table, present, version, findings);
      } else if (table.since <= version) {
        findings.integrity += u"Falta la tabla %1."_s.arg(table.name);
      }
    }
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
