#pragma once

#include "database/ConnectionString.h"

#include <QByteArray>

#include <memory>

struct pg_cancel;
struct pg_conn;
struct pg_result;

namespace database {

struct PostgresDeleter {
  void operator()(pg_conn* connection) const;
  void operator()(pg_result* result) const;
  void operator()(pg_cancel* cancel) const;
};

using PostgresResult = std::unique_ptr<pg_result, PostgresDeleter>;

/// A session of a server with this program's settings. Errors are automation::Error with the numbers of
/// platform/adodb/ErrorNumbers.h.
class PostgresHandle {
 public:
  /// Connects; waits ten seconds at most, and for who is asked for a password. Raises CannotOpen, also for a server
  /// that is not of use (another encoding, an unprotected line).
  explicit PostgresHandle(const ConnectionString& target);

  /// Whether a server answers there; waits three seconds at most.
  static bool IsAnswering(const ConnectionString& target);

  const ConnectionString& Target() const { return m_target; }
  pg_conn* Engine() const { return m_engine.get(); }
  /// False once the line is found cut.
  bool IsAlive() const;
  /// The same after reading what has come, which may say so; asks nothing.
  bool IsStillAlive() const;

  /// Runs statements of this engine, several with semicolons between. Raises the engine's refusal.
  void Run(const QByteArray& sql) const;
  /// The first value of the first row, null for none. Raises the engine's refusal.
  QByteArray Value(const QByteArray& sql) const;
  /// Asks the server to give up the running statement.
  void Cancel() const;

 private:
  PostgresResult Execute(const QByteArray& sql) const;
  void Open();
  void Reach();
  bool WantsPassword() const;
  void RequireUsable() const;

  ConnectionString m_target;
  std::unique_ptr<pg_conn, PostgresDeleter> m_engine;
};

}  // namespace database
