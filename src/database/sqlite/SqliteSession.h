#pragma once

#include "database/engine/Session.h"
#include "database/sqlite/SqliteHandle.h"

#include <optional>

namespace database {

/// The work of a connection on a database file. Transactions take the write lock when they begin, so that they cannot
/// fail half-way because another program began one, too.
class SqliteSession : public Session {
 public:
  SqliteSession() = default;
  /// A connected session over a file that is not, or not yet, of the current version.
  explicit SqliteSession(SqliteHandle handle) : m_handle(std::move(handle)) {}

  /// The open file of a connected session.
  const SqliteHandle& Handle() const { return *m_handle; }

  const Target& ItsTarget() const override;
  bool IsConnected() const override { return m_handle.has_value(); }
  void Connect(const ConnectionString& target) override;
  void Leave() override;
  bool Pause() override;
  bool Resume() override;
  qint64 Clock() const override;
  std::unique_ptr<Rows> Read(std::shared_ptr<CachedPlan> plan, const ParameterValues& values) override;
  qint64 Write(const std::shared_ptr<CachedPlan>& plan, const ParameterValues& values) override;
  qint64 NewKey() const override;
  void Begin() override;
  void BeginSnapshot() override;
  void Commit() override;
  void RollBack() override;
  bool HasLostTransaction() const override;

 private:
  void UndoOpenTransaction();

  std::optional<SqliteHandle> m_handle;
  bool m_isPlainUse = false;  ///< Of a file that may be written, neither its preparation nor its check.
};

}  // namespace database
