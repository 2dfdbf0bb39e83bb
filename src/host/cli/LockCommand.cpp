#include "host/cli/LockCommand.h"

#include "database/Database.h"
#include "host/cli/PrintedTable.h"
#include "host/cli/Startup.h"
#include "host/desktop/LocksDialog.h"
#include "platform/automation/Error.h"

#include <QTextStream>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QStringList Cells(const HeldRecord& record) {
  return QStringList{QString::number(record.holder.number)} + record.Columns();
}

void Release(Session& session, const QList<HeldRecord>& records, int number) {
  const auto record =
      std::ranges::find_if(records, [&](const HeldRecord& held) { return held.holder.number == number; });
  if (record == records.end() || !TakeLockFrom(session, *record)) {
    throw automation::Error(automation::InvalidProcedureCall, u"No hay ningún bloqueo con el número %1."_s.arg(number));
  }
  QTextStream(stdout) << u"Soltado: %1 «%2». %3.\n"_s.arg(record->kind, record->name, record->holder.Description());
}

}  // namespace

void RunLockCommand(const CommandLine& line) {
  const Target target = TargetOf(line);
  RequireWanted(target, line);
  const auto connection = database::CreateConnection(target.connectionString);
  connection->Open();
  Session session;
  session.connection = connection.get();
  const QList<HeldRecord> records = HeldRecords(session);
  if (line.release) {
    Release(session, records, *line.release);
    return;
  }
  if (records.isEmpty()) {
    QTextStream(stdout) << u"Ningún registro está en uso.\n"_s;
    return;
  }
  QList<QStringList> table{QStringList{u"N.º"_s} + HeldRecord::Titles()};
  for (const HeldRecord& record : records) {
    table.append(Cells(record));
  }
  PrintTable(table);
}

}  // namespace host
