#pragma once

#include "database/ConnectionLayer.h"
#include "platform/automation/Error.h"

#include <chrono>
#include <functional>
#include <memory>

namespace host {

/// A connection that waits where the user sees it. What another program's lock holds back is tried again for up to
/// `longest`, and what finds no server while the connection is open until there is one, with a box that says so and can
/// end it after the first moment, while the program goes on hearing signals. Whoever has waited in vain does not wait a
/// second time until the connection is closed or a statement has passed. A statement that was refused has changed
/// nothing, in a transaction either.
///
/// Raises what the other connection raises; DatabaseLocked says how long was waited.
class PatientConnection : public database::ConnectionLayer {
 public:
  /// How long the other connection may wait by itself, in which nobody can do anything.
  static constexpr std::chrono::milliseconds tryTime{100};

  explicit PatientConnection(std::unique_ptr<adodb::Connection> real,
                             std::chrono::milliseconds longest = std::chrono::seconds(5));

  adodb::Connection& Beneath() const override { return *m_real; }
  int State() const override { return m_real->State(); }
  void Open() override;
  void Open(const QString& connectionString, const QString& user, const QString& password, int options) override;
  void Close() override;
  std::unique_ptr<adodb::Recordset> Execute(const QString& statement) override;
  qint64 RecordsAffected() const override { return m_real->RecordsAffected(); }
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  bool IsWorthWaiting(const automation::Error& error) const;
  void Patiently(const std::function<void()>& work);

  std::unique_ptr<adodb::Connection> m_real;
  std::chrono::milliseconds m_longest;
  bool m_hasGivenUp = false;
};

}  // namespace host
