#pragma once

#include "database/Announcement.h"
#include "database/ConnectionLayer.h"
#include "host/records/WriteWatch.h"

#include <QString>

#include <memory>
#include <utility>
#include <vector>

namespace database {
struct WrittenRecord;
}

namespace host {

struct Session;

/// The connection that the host lends to the component. It hands everything on, to the letter and in order, and the
/// answers back; what the component sees is what the engine's own connection would show it. Besides:
///   - Every write to the office's tables gets a note in the change log (see ChangeLog.h), in the transaction of the
///     write: the component's where there is one, otherwise one around the statement. A save that changes no value gets
///     none, a statement that writes several rows gets one.
///   - It knows what was written and committed (WriteWatch).
///   - Several requests can be one transaction (a batch): they open and close the connection as they like meanwhile.
///   - It remembers which locks of the user could not be released since the database was busy.
///   - After a cut the session's record locks go over to its new presence, and nothing is written to the office's
///     tables while one of them is lost (LockMemory).
///
/// A viewer's session writes nothing of the office's (DatabaseReadOnly).
///
/// Where a note can't be written the statement has failed, with the note's error. A statement outside of transactions
/// whose own one is lost before its COMMIT was sent (a cut line, a deadlock) has done nothing, and is run once more.
class OfficeConnection : public database::ConnectionLayer {
 public:
  /// `session` says who writes, at each note; it outlives the connection.
  OfficeConnection(std::unique_ptr<adodb::Connection> engine, Session& session);
  ~OfficeConnection() override;

  /// Marks the notes of this object: those of other programs have another one, even of the same user.
  const QString& Program() const { return m_program; }

  /// A lock that could not be released: it waits for ReleaseWaiting.
  void ReleaseLater(const QString& keyColumn, int key);
  /// Releases the locks that wait, before another one is taken, and keeps what still can't be released. Whoever wants
  /// one of them again has it. Raises nothing.
  void ReleaseWaiting(const QString& wantedColumn, int wantedKey);

  adodb::Connection& Beneath() const override { return *m_engine; }
  int State() const override;
  void Open() override;
  void Open(const QString& connectionString, const QString& user, const QString& password, int options) override;
  void Close() override;
  std::unique_ptr<adodb::Recordset> Execute(const QString& statement) override;
  qint64 RecordsAffected() const override { return m_affected; }
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

  /// Opens the connection where it is closed and takes the write lock: nobody else changes anything until the end of
  /// the batch, on a server anything in these tables (see database/WriteHold.h). Raises TransactionActive inside a
  /// transaction. Transactions that begin and end inside the batch are part of it; one that is rolled back takes the
  /// batch with it.
  void BeginBatch(const QStringList& tables);
  /// Raises TransactionLost for a batch that was rolled back before its end. The connection is open afterwards.
  void CommitBatch();
  /// Undoes what the batch did. Before the end of its work the rest of the batch is lost, too: what would write raises
  /// TransactionLost until EndBatch. Raises nothing.
  void RollBackBatch();
  /// The end of a batch's work, committed or not; undoes what was not committed. Raises nothing.
  void EndBatch();

 private:
  friend class WriteWatch;

  enum class Batch { None, Running, RolledBack };

  void CheckLooksOpen() const;
  /// Also that the batch is not lost.
  void CheckBatch() const;
  void CheckInTransaction() const;
  /// By the rights of the session's user.
  void RequireMayWrite() const;
  /// A statement that was run, with what is to be noted of it.
  struct Noted;
  Noted RunNoted(const QString& statement, const database::WrittenRecord& written);
  void Note(const Noted& noted, database::Announcement::End end);
  std::unique_ptr<adodb::Recordset> ExecuteAlone(const QString& statement, const database::WrittenRecord& written);
  void Committed();
  /// What was written in a transaction that is gone.
  void Forget();

  std::unique_ptr<adodb::Connection> m_engine;
  Session& m_session;
  QString m_program;
  qint64 m_affected = 0;
  Batch m_batch = Batch::None;
  bool m_looksOpen = false;      ///< During a batch.
  bool m_inTransaction = false;  ///< One that somebody else began.
  QList<WrittenRow> m_pending;   ///< Written and not yet committed.
  std::vector<WriteWatch*> m_watches;
  QList<std::pair<QString, int>> m_waitingLocks;  ///< Key columns and keys.
};

}  // namespace host
