#pragma once

#include "host/records/ComponentBridge.h"
#include "host/records/Deletion.h"
#include "host/records/OfficeConnection.h"
#include "host/records/Session.h"
#include "support/TestDatabase.h"

#include <QString>

#include <memory>

/// Somebody else at the same database: "Lorenzo", with a connection and services of his own. His locks count as another
/// user's, since a lock belongs to a process and a user together.
class Colleague {
 public:
  explicit Colleague(const support::TestDatabase& database);

  host::Session& Session() { return m_session; }
  /// Writes as his program does, with a note in the change log.
  template <typename... Values>
  void Execute(std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) {
    m_office.Execute(statement.Text(values...));
  }
  /// Deletes a record through whatever is registered as the component. Empty, or why it stays.
  QString Delete(int node, int id, const QString& name);

 private:
  host::Session m_session;
  host::OfficeConnection m_office;
  std::unique_ptr<QObject> m_services;
  host::ComponentBridge m_bridge;
};
