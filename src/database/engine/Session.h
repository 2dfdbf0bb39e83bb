#pragma once

#include "database/ConnectionString.h"
#include "database/ServerRoles.h"
#include "database/engine/ParameterValues.h"
#include "database/engine/PlanCache.h"
#include "database/engine/Rows.h"

#include <exception>
#include <memory>
#include <vector>

namespace database {

/// A statement that can be sent.
struct ReadyStatement {
  std::shared_ptr<CachedPlan> plan;
  ParameterValues values;
};

/// What came of a statement.
struct StatementOutcome {
  std::shared_ptr<CachedPlan> plan;
  std::unique_ptr<Rows> rows;  ///< In memory; null for one that writes.
  qint64 affected = 0;
  qint64 newKey = 0;           ///< See Session::NewKey.
  std::exception_ptr failure;  ///< Null for one that was run.
};

/// What an engine does for an EngineConnection, which keeps the contract: it asks for nothing while the session is not
/// connected, begins no transaction inside another, and ends none that it did not begin. Errors are automation::Error
/// with the numbers of platform/adodb/ErrorNumbers.h and texts that say what to do.
class Session {
 public:
  Session() = default;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  virtual ~Session() = default;

  /// How this engine's statements are written; lives as long as the program.
  virtual const Target& ItsTarget() const = 0;

  virtual bool IsConnected() const = 0;
  /// Raises CannotOpen, OlderDatabase, NewerDatabase, NotOurDatabase and the engine's refusals.
  virtual void Connect(const ConnectionString& target) = 0;
  /// Undoes a transaction that is still open. Raises nothing.
  virtual void Leave() = 0;
  /// Undoes a transaction that is still open, and stays connected until Resume or Leave. False where the session must
  /// rather leave. Raises nothing.
  virtual bool Pause() = 0;
  /// After a pause: whether the session goes on as if it had just connected. Raises nothing.
  virtual bool Resume() = 0;
  /// Whether the line to the database is cut and no transaction has begun on it, so that the session had better connect
  /// anew before it goes on. Costs no question.
  virtual bool NeedsNewLine() { return false; }
  /// Whether the last statement failed because what was prepared for it is of earlier tables; true once.
  virtual bool MustPrepareAnew() { return false; }
  /// See Presence.h; taken once for each line.
  virtual int TakePresence() { return 0; }
  virtual bool HasEnded(int /*presence*/) { return false; }
  /// See ServerRoles.h.
  virtual QList<ServerRole> Roles(bool /*onlyOwn*/) { return {}; }

  /// A number that differs after somebody else's commit; see ChangeClock.
  virtual qint64 Clock() const = 0;

  /// Starts a statement that returns rows. The rows keep the plan; the values may change once this returns.
  virtual std::unique_ptr<Rows> Read(std::shared_ptr<CachedPlan> plan, const ParameterValues& values) = 0;
  /// Runs a statement that writes, and gives the number of rows that it wrote. One that fails has written nothing.
  virtual qint64 Write(const std::shared_ptr<CachedPlan>& plan, const ParameterValues& values) = 0;
  /// The key that the engine made for the row of the last Write, whose plan says that it makes one.
  virtual qint64 NewKey() const = 0;

  /// Whether statements cost less together than one by one.
  virtual bool GainsByAnnouncements() const { return false; }
  /// Runs the statements at once, as if they came one after the other, and ends with the first that fails. Behind the
  /// last one the transaction is committed where `commits`; an error of that is the last one's, and the next Commit
  /// does nothing more. Outside of transactions they only read. Nothing where the engine can't take them so.
  virtual std::vector<StatementOutcome> RunAhead(const std::vector<ReadyStatement>& /*statements*/, bool /*commits*/) {
    return {};
  }

  virtual void Begin() = 0;
  /// The same for a transaction that only reads, see Snapshot.h.
  virtual void BeginSnapshot() = 0;
  /// Inside a transaction: nobody else writes to these tables until its end. Where a transaction holds off every other
  /// writer by itself there is nothing to do.
  virtual void HoldWrites(const std::vector<const Table*>& /*tables*/) {}
  virtual void Commit() = 0;
  virtual void RollBack() = 0;
  /// Inside a transaction: whether the engine has undone the whole of it by itself.
  virtual bool HasLostTransaction() const = 0;
};

}  // namespace database
