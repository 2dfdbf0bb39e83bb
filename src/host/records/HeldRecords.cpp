#include "host/records/HeldRecords.h"

#include "host/records/ChangeLog.h"
#include "host/records/ChangeNote.h"
#include "host/records/NodeCatalog.h"
#include "host/records/OpenConnection.h"
#include "host/records/RecordReader.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

HeldRecord Describe(adodb::Connection& connection, const RecordLocks& locks, const LockHolder& holder) {
  HeldRecord record{.holder = holder, .kind = holder.keyColumn, .name = QString::number(holder.key)};
  record.hasEnded = locks.HasEnded(holder);
  const Node* node = FindNodeByKey(holder.keyColumn);
  if (node == nullptr) {
    return record;
  }
  record.kind = node->title;
  const QString name = RecordName(connection, *node, holder.key);
  if (!name.isEmpty()) {
    record.name = name;
  }
  return record;
}

Change Note(const Session& session, const Node& node, const HeldRecord& record) {
  return {.moment = QDateTime::currentDateTimeUtc(),
          .userId = session.userId,
          .userName = session.userName,
          .machine = CurrentProcess().machine,
          .table = node.table,
          .key = record.holder.key,
          .name = record.name,
          .kind = ChangeKind::LockReleased};
}

}  // namespace

bool TakeLockFrom(Session& session, const HeldRecord& record) {
  adodb::Transaction together(Opened(session.connection));
  if (!session.Locks().ReleaseOf(record.holder)) {
    return false;
  }
  if (const Node* node = FindNodeByKey(record.holder.keyColumn)) {
    session.connection->Execute(NoteStatement(Note(session, *node, record)));
  }
  together.Commit();
  return true;
}

QStringList HeldRecord::Columns() const {
  const QString since = holder.since.toLocalTime().toString(u"dd/MM/yyyy HH:mm"_s);
  return {kind,
          name,
          holder.userName,
          holder.process.machine,
          since,
          hasEnded ? u"su programa ha terminado"_s : u"en uso"_s};
}

QStringList HeldRecord::Titles() {
  return {u"Clase"_s, u"Registro"_s, u"Usuario"_s, u"Equipo"_s, u"Desde"_s, u"Estado"_s};
}

QList<HeldRecord> HeldRecords(Session& session) {
  adodb::Connection& connection = Opened(session.connection);
  QList<HeldRecord> records;
  const RecordLocks locks = session.Locks();
  for (const LockHolder& holder : locks.All()) {
    records.append(Describe(connection, locks, holder));
  }
  return records;
}

}  // namespace host
