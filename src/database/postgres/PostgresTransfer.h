#pragma once

#include "database/engine/Transfer.h"
#include "database/postgres/PostgresSession.h"

namespace database {

/// The tables of the search path of a session that is in a transaction, as one side of a transfer. Session and
/// connection, which is that session's, outlive the object.
class PostgresTransfer : public TransferTarget {
 public:
  PostgresTransfer(PostgresSession& session, adodb::Connection& connection)
      : m_session(session), m_connection(connection) {}

  adodb::Connection& Connection() const override { return m_connection; }
  qint64 LastKey(const Table& table) const override;
  std::unique_ptr<RowTaker> Taker(const Table& table) const override;
  void CountOnFrom(const Table& table, qint64 key) const override;

 private:
  PostgresSession& m_session;
  adodb::Connection& m_connection;
};

/// Runs `read` over the tables as they are at one moment. Needs the right to read and nothing else. Raises what opening
/// raises.
void ReadPostgres(const ConnectionString& target, const std::function<void(const TransferSource&)>& read);

/// RestoreDatabase for this engine: `source` takes the place of what the server has. Everything happens in one
/// transaction. Gives the schema of the server's under which the replaced tables stay, empty where there were none.
/// Raises NewerDatabase and NotOurDatabase for what must not be replaced, DatabaseLocked while anybody works there, and
/// what CarryRows raises.
QString RestorePostgres(const ConnectionString& target, const TransferSource& source);

}  // namespace database
