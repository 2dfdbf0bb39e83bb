#pragma once

#include "database/Presence.h"
#include "database/dialect/Lexer.h"
#include "database/engine/AnnouncedStatements.h"
#include "database/engine/KeyMemory.h"
#include "database/engine/Session.h"
#include "platform/adodb/Connection.h"

#include <memory>
#include <vector>

namespace database {

class EngineRecordset;

/// The contract's connection over any engine: states, transactions, statements from their text to their values. A
/// statement that fails inside a transaction changes nothing and leaves the transaction open; where the engine had to
/// undo the transaction itself (a full disk, for example), every further statement raises TransactionLost until the
/// roll-back.
///
/// A closed connection keeps its session for the next opening of the same string. A line that was cut is replaced
/// before the next statement, unless a transaction has begun on it. A statement that writes is never sent twice.
class EngineConnection : public adodb::Connection {
 public:
  EngineConnection(std::unique_ptr<Session> session, const ConnectionString& target);
  ~EngineConnection() override;

  int State() const override;
  void Open() override;
  void Open(const QString& connectionString, const QString& user, const QString& password, int options) override;
  void Close() override;
  std::unique_ptr<adodb::Recordset> Execute(const QString& statement) override;
  qint64 RecordsAffected() const override { return m_affected; }
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

  /// Ends the session that a closed connection keeps.
  void LeaveSession();

  /// The remembered key of the last row that was added to the table.
  std::optional<qint64> NewKeyOf(const Table& table) const { return m_keys.Find(table); }

  /// See Snapshot.h.
  void BeginSnapshot();

  /// See WriteHold.h.
  void HoldWrites(const std::vector<const Table*>& tables);

  /// See Announcement.h.
  void Announce(const QStringList& statements, bool commits);

  /// See Presence.h.
  int Presence();
  bool HasEnded(int presence);
  QList<ServerRole> Roles(bool onlyOwn);
  void SetCarryOver(CarryOver carryOver) { m_carryOver = std::move(carryOver); }
  /// Connects anew where the line is cut and no transaction has begun on it, and takes over what belonged to the
  /// presence. Raises what either raises.
  void Revive();

  Session& EngineSession() { return *m_session; }

  /// Recordsets enter and leave the list of those that close with the connection.
  void Attach(EngineRecordset* recordset) { m_recordsets.push_back(recordset); }
  void Detach(EngineRecordset* recordset);

 protected:
  const Session& ItsSession() const { return *m_session; }

 private:
  /// Connects, or goes on with the session that was kept.
  void Enter(const ConnectionString& target);
  void CheckOpen() const;
  void CheckClosed() const;
  void CheckInTransaction() const;
  void Begin(void (Session::*begin)());
  std::unique_ptr<adodb::Recordset> Run(const QString& statement);
  void Connect(const ConnectionString& target);
  void CarryPresenceOver();
  void BufferRecordsets();
  std::unique_ptr<adodb::Recordset> AnswerMaximum(const QString& statement, const Plan& plan, qint64 key);
  void NoteKey(const Effect& effect, qint64 newKey);
  /// The statement's plan and values; nothing where its answer may be known here.
  std::optional<ReadyStatement> MakeReady(const QString& statement);
  void RunAnnounced();
  std::unique_ptr<adodb::Recordset> Answer(StatementOutcome outcome);

  std::unique_ptr<Session> m_session;
  ConnectionString m_target;
  bool m_isOpen = false;
  PlanCache m_plans;
  KeyMemory m_keys;
  AnnouncedStatements m_announced;
  Lexer m_lexer;
  ParameterValues m_values;
  std::vector<EngineRecordset*> m_recordsets;
  qint64 m_affected = 0;
  bool m_inTransaction = false;
  CarryOver m_carryOver;
  int m_presence = 0;      ///< Of the present line; 0 before it was asked for.
  int m_lastPresence = 0;  ///< Of an earlier line, whose belongings are to be taken over.
  bool m_isReviving = false;
};

}  // namespace database
