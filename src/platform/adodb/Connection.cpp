#include "platform/adodb/Connection.h"

namespace adodb {

Recordset::~Recordset() = default;

Connection::~Connection() = default;

Transaction::Transaction(Connection& connection) : m_connection(&connection) {
  connection.BeginTrans();
}

Transaction::~Transaction() {
  if (m_connection == nullptr) {
    return;
  }
  try {
    m_connection->RollbackTrans();
  } catch (...) {
    return;
  }
}

void Transaction::Commit() {
  m_connection->CommitTrans();
  m_connection = nullptr;
}

}  // namespace adodb
