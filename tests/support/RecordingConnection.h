#pragma once

#include "database/ConnectionLayer.h"

#include <QStringList>

#include <functional>

namespace support {

/// A connection that hands everything to another one, keeps the statements and the transaction calls that went
/// through, and fails where a test wants it to.
class RecordingConnection : public database::ConnectionLayer {
 public:
  explicit RecordingConnection(adodb::Connection& real) : m_real(real) {}

  /// What went through since the last Clear: statements to the letter, and "BEGIN", "COMMIT", "ROLLBACK", "OPEN",
  /// "CLOSE".
  const QStringList& Log() const { return m_log; }
  /// The statements that start with one of the words INSERT, UPDATE, DELETE.
  QStringList Writes() const;
  void Clear() { m_log.clear(); }
  /// Calls `hook` before each entry is logged and done; what the hook throws is the connection's failure.
  void SetHook(std::function<void(const QString& entry)> hook) { m_hook = std::move(hook); }
  /// Entries that begin so fail, with the number -2147467259; an empty text ends that.
  void FailAt(const QString& beginning);

  adodb::Connection& Beneath() const override { return m_real; }
  int State() const override { return m_real.State(); }
  void Open() override;
  void Open(const QString& connectionString, const QString& user, const QString& password, int options) override;
  void Close() override;
  std::unique_ptr<adodb::Recordset> Execute(const QString& statement) override;
  qint64 RecordsAffected() const override { return m_real.RecordsAffected(); }
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  void Note(const QString& entry);

  adodb::Connection& m_real;
  QStringList m_log;
  std::function<void(const QString&)> m_hook;
};

}  // namespace support
