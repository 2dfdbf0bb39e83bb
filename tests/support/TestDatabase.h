#pragma once

#include "database/Database.h"
#include "platform/adodb/Statement.h"
#include "support/TestServer.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace support {

/// The rows of a statement, a line each: its values as texts with "|" between them, Null as "NULL".
QStringList Rows(adodb::Connection& connection, const QString& statement);

/// The same in one line, the rows with "/" between them; "error N" where the statement fails with that number.
QString Outcome(adodb::Connection& connection, const QString& statement);

/// A prepared database, gone with this object, and a connection to it: a file in a folder of its own, or one on a
/// server (see TestServer).
class TestDatabase {
 public:
  explicit TestDatabase(database::Content content = database::Content::Reference);
  /// A database that something else made and keeps.
  explicit TestDatabase(const QString& connectionString);

  /// A path in the object's folder, without a name that of the database, where it is a file of this object's.
  QString Path(const QString& name = {}) const;
  QString ConnectionString() const { return m_connectionString; }
  /// Null for a file.
  const ServerDatabase* Server() const { return m_server ? &*m_server : nullptr; }
  /// Opened when it is first asked for.
  adodb::Connection& Connection() const;
  /// Lets the file go; Connection() is not used afterwards.
  void Disconnect() { m_connection.reset(); }
  /// Another connection, open.
  std::unique_ptr<adodb::Connection> Connect() const;

  // The statements of a test run beside Connection(), on a connection of their own: they see what was committed.

  template <typename... Values>
  void Execute(std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) const {
    QueryBeside(statement.Text(values...));
  }
  template <typename... Values>
  QStringList Query(std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) const {
    return QueryBeside(statement.Text(values...));
  }
  /// The number in the first column of the first row. Throws std::runtime_error where there is no row.
  template <typename... Values>
  int Id(std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) const {
    return FirstNumber(statement.Text(values...));
  }

 private:
  QStringList QueryBeside(const QString& statement) const;
  int FirstNumber(const QString& statement) const;

  QTemporaryDir m_folder;
  QString m_file;
  QString m_connectionString;
  std::optional<ServerDatabase> m_server;
  mutable std::unique_ptr<adodb::Connection> m_connection;
};

}  // namespace support
