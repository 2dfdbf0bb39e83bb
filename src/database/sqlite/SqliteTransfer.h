#pragma once

#include "database/engine/Transfer.h"
#include "database/sqlite/SqliteConnection.h"

namespace database {

/// A database file as one side of a transfer. The connection outlives the object.
class SqliteTransfer : public TransferTarget {
 public:
  explicit SqliteTransfer(SqliteConnection& connection) : m_connection(connection) {}

  adodb::Connection& Connection() const override { return m_connection; }
  qint64 LastKey(const Table& table) const override;
  std::unique_ptr<RowTaker> Taker(const Table& table) const override;
  void CountOnFrom(const Table& table, qint64 key) const override;

 private:
  SqliteConnection& m_connection;
};

}  // namespace database
