#pragma once

#include "database/ConnectionString.h"

#include <QByteArray>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace database {

/// Deletes prepared statements and open databases.
struct SqliteDeleter {
  void operator()(sqlite3* engine) const;
  void operator()(sqlite3_stmt* statement) const;
};

using SqliteStatement = std::unique_ptr<sqlite3_stmt, SqliteDeleter>;

/// An open database file with its collation, its functions and its defences: double-quoted texts, triggers,
/// views, extensions and further attached files are off, so that a hostile file can run nothing.
class SqliteHandle {
 public:
  enum class Missing { Refuse, Create };

  /// Raises CannotOpen, the engine's refusals, and DatabaseReadOnly at once for an existing file that is to be written
  /// and may not be, or whose folder may not. A file on a full disk is opened for reading. A file that is created is
  /// the user's alone. A log that another program left is not moved into the file when this object goes, until
  /// SetCheckpointOnClose allows it; without one, nothing stays beside a file that turns out to be another's.
  SqliteHandle(const ConnectionString& target, Missing missing);

  sqlite3* Engine() const { return m_engine.get(); }
  const ConnectionString& Target() const { return m_target; }

  /// Runs statements of the engine's own dialect. Raises the engine's refusal.
  void Run(const QByteArray& sql) const;
  /// The first value of the first row, an empty text for none.
  QByteArray Value(const QByteArray& sql) const;
  SqliteStatement Prepare(const QByteArray& sql) const;
  /// Raises the error of `code` unless it is success.
  void Check(int code) const;

  /// True when the file may not be written.
  bool IsReadOnly() const;
  /// True outside a transaction.
  bool IsAutocommit() const;
  /// How long to wait for another program's lock from now on.
  void SetWait(int milliseconds) const;
  /// Whether closing may move what the write-ahead log holds into the file.
  void SetCheckpointOnClose(bool enabled) const;

 private:
  void OpenEngine(const QByteArray& name, int flags);
  void OpenAsItStands(const QString& path);
  bool LacksRoom() const;
  void Configure() const;

  ConnectionString m_target;
  std::unique_ptr<sqlite3, SqliteDeleter> m_engine;
};

}  // namespace database
