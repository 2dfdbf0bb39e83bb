#pragma once

#include "platform/adodb/Recordset.h"

#include <QMetaType>

#include <memory>

namespace adodb {

/// The shared database connection that a host lends to the component. The host owns it; who borrows it opens it
/// when it is closed and never keeps it beyond a call.
///
/// Errors (automation::Error): 3704 for work on a closed connection, 3705 for opening an open one, 13 for a text
/// that is no number where a number is stored, -2147168237 for a second transaction inside one, -2147168242 for
/// the end of a transaction that never began, and the engine's own refusals with the numbers and Spanish texts
/// that the engine's documentation in this project lists.
class Connection {
 public:
  Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  virtual ~Connection();

  virtual int State() const = 0;
  /// Opens with the connection's own stored connection string.
  virtual void Open() = 0;
  /// Opens with the string given, or the stored one where it is empty. `options` -1 is "unspecified", the only
  /// value in use.
  virtual void Open(const QString& connectionString, const QString& user, const QString& password, int options) = 0;
  /// Closes, undoes a transaction that is still open, and closes every recordset of this connection.
  virtual void Close() = 0;

  /// Runs one statement. Never null: for a statement without rows the recordset is closed (State 0).
  virtual std::unique_ptr<Recordset> Execute(const QString& statement) = 0;
  /// Rows that the last statement of Execute wrote.
  virtual qint64 RecordsAffected() const = 0;

  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;
};

/// A transaction that is rolled back unless Commit was reached.
class Transaction {
 public:
  explicit Transaction(Connection& connection);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  /// Rolls back what was not committed; an error of the roll-back itself is swallowed, for the one that led here
  /// matters more.
  ~Transaction();
  void Commit();

 private:
  Connection* m_connection;
};

}  // namespace adodb

Q_DECLARE_METATYPE(adodb::Connection*)
