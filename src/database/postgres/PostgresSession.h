#pragma once

#include "database/engine/Session.h"
#include "database/postgres/PostgresPipeline.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace database {

class PostgresRows;

/// The work of a connection on a server: one round trip for a statement. BEGIN travels with the first statement of a
/// transaction, and a savepoint around each, so that one that fails changes nothing and the transaction goes on.
class PostgresSession : public Session {
 public:
  PostgresSession();
  /// A connected session to a database that is not, or not yet, of the current version.
  explicit PostgresSession(PostgresHandle handle);
  ~PostgresSession() override;

  /// The line of a connected session. Nothing may be read meanwhile.
  const PostgresHandle& Handle();
  /// The same inside the transaction that was begun, for statements of this engine's own.
  const PostgresHandle& InTransaction();

  const Target& ItsTarget() const override;
  bool IsConnected() const override { return m_handle.has_value(); }
  void Connect(const ConnectionString& target) override;
  void Leave() override;
  bool Pause() override;
  bool Resume() override;
  bool NeedsNewLine() override;
  bool MustPrepareAnew() override { return std::exchange(m_isOutdated, false); }
  int TakePresence() override;
  bool HasEnded(int presence) override;
  QList<ServerRole> Roles(bool onlyOwn) override;
  qint64 Clock() const override;
  std::unique_ptr<Rows> Read(std::shared_ptr<CachedPlan> plan, const ParameterValues& values) override;
  qint64 Write(const std::shared_ptr<CachedPlan>& plan, const ParameterValues& values) override;
  qint64 NewKey() const override { return m_newKey; }
  bool GainsByAnnouncements() const override { return true; }
  std::vector<StatementOutcome> RunAhead(const std::vector<ReadyStatement>& statements, bool commits) override;
  void Begin() override;
  void BeginSnapshot() override;
  void HoldWrites(const std::vector<const Table*>& tables) override;
  void Commit() override;
  void RollBack() override;
  bool HasLostTransaction() const override;

  // Notices (see database/Notices.h).

  /// From now on the server tells this line what is written, the present and later ones. `onLine` hears of each new
  /// line its socket, and -1 before a line goes; `onUse` that something came over it, notices perhaps. Without them no
  /// more is heard.
  void Listen(std::function<void(int socket)> onLine, std::function<void()> onUse);
  /// The socket of the line; -1 without one.
  int Socket() const;
  bool IsAlive() const { return m_handle && m_handle->IsAlive(); }
  /// The tables that were told since the last time.
  QStringList TakeNotices();

  // What the rows of a running statement tell and ask.

  void EndRead(const PostgresRows& rows);
  /// Ends the statement: a failed one is undone, and its error raised. `concerned` is what the error names if the
  /// server names nothing.
  void Conclude(PostgresPipeline& pipeline, const QString& concerned = {});
  void Cancel() const { m_handle->Cancel(); }

 private:
  using Discarded = std::vector<QByteArray>;

  /// A statement in a pipeline: how many commands stand before it, and for which types it is prepared there.
  struct Sent {
    CachedPlan* plan = nullptr;
    int before = 0;
    std::optional<QByteArray> signature = std::nullopt;
  };

  int AddOpening(PostgresPipeline& pipeline);
  void PassOpening(PostgresPipeline& pipeline, int opening);
  Sent Add(PostgresPipeline& pipeline, CachedPlan& plan, const PostgresParameters& parameters);
  void PassTo(PostgresPipeline& pipeline, const Sent& sent);
  std::unique_ptr<PostgresPipeline> Send(CachedPlan& plan, const PostgresParameters& parameters);
  StatementOutcome Receive(PostgresPipeline& pipeline, const std::shared_ptr<CachedPlan>& plan);
  bool MayGoAhead(const Effect& effect) const;
  void BufferRows();
  void Undo(const pg_result* failure);
  void CountOnFrom(const Table& table);
  void CountOn();

  std::optional<PostgresHandle> m_handle;
  PostgresRows* m_reading = nullptr;  ///< The rows that are still on their way.
  std::shared_ptr<Discarded> m_discarded;
  std::set<const Table*> m_givenKeys;  ///< Tables with keys beyond what their sequences know.
  qint64 m_newKey = 0;
  qint64 m_lastName = 0;
  bool m_inTransaction = false;
  bool m_isBegun = false;  ///< The server knows of the transaction, too.
  bool m_isLost = false;
  bool m_hasCommands = false;  ///< Those of transactions are prepared on this line.
  bool m_isPresent = false;
  bool m_isOutdated = false;
  std::set<const Table*> m_written;  ///< In this transaction.
  std::function<void(int)> m_onLine;
  std::function<void()> m_onUse;
};

}  // namespace database
