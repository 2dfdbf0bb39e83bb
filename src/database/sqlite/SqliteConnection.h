#pragma once

#include "database/dialect/Lexer.h"
#include "database/sqlite/SqliteHandle.h"
#include "database/sqlite/StatementCache.h"
#include "platform/adodb/Connection.h"
#include "platform/automation/Error.h"

#include <optional>
#include <string>
#include <vector>

namespace database {

class SqliteRecordset;

/// A connection to a database file. Transactions take the write lock when they begin, so that they cannot fail
/// half-way because another program began one, too. A statement that fails inside a transaction changes nothing
/// and leaves the transaction open; where the engine had to undo the transaction itself (a full disk, for
/// example), every further statement raises TransactionLost until the roll-back.
class SqliteConnection : public adodb::Connection {
 public:
  explicit SqliteConnection(const ConnectionString& target);
  /// An open connection over a file that is not, or not yet, of the current version; for its preparation.
  explicit SqliteConnection(SqliteHandle handle);
  ~SqliteConnection() override;

  int State() const override;
  void Open() override;
  void Open(const QString& connectionString, const QString& user, const QString& password, int options) override;
  void Close() override;
  std::unique_ptr<adodb::Recordset> Execute(const QString& statement) override;
  qint64 RecordsAffected() const override { return m_affected; }
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

  /// The open file; for this folder only.
  const SqliteHandle& Handle() const { return *m_handle; }
  automation::Error Refusal(int code) const;
  /// Recordsets enter and leave the list of those that close with the connection.
  void Attach(SqliteRecordset* recordset) { m_recordsets.push_back(recordset); }
  void Detach(SqliteRecordset* recordset);

 private:
  struct BoundText {
    int parameter;
    std::size_t offset;
    std::size_t size;
  };

  void OpenTarget(const ConnectionString& target);
  void CheckOpen() const;
  void Bind(sqlite3_stmt* statement, const Plan& plan, QStringView text);
  void RunWrite(StatementLease& lease);
  void BufferRecordsets();

  ConnectionString m_target;
  std::optional<SqliteHandle> m_handle;
  StatementCache m_cache;
  Lexer m_lexer;
  std::string m_texts;
  std::vector<BoundText> m_boundTexts;
  std::vector<SqliteRecordset*> m_recordsets;
  qint64 m_affected = 0;
  bool m_inTransaction = false;
};

}  // namespace database
