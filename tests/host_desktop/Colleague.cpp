#include "Colleague.h"

#include "host/services/cPrincipal.h"

using namespace Qt::StringLiterals;

Colleague::Colleague(const support::TestDatabase& database)
    : m_office(database.Connect(), m_session),
      m_services(std::make_unique<host::cPrincipal>(m_session)),
      m_bridge(*m_services, m_session) {
  m_session.connection = &m_office;
  m_session.office = &m_office;
  m_session.title = u"Kel"_s;
  m_session.userId = 2;
  m_session.userName = u"Lorenzo"_s;
}

QString Colleague::Delete(int node, int id, const QString& name) {
  const host::DeletionResult result =
      host::DeleteRecords(m_bridge, *host::FindNode(node), {{id, name}}, [](int) { return true; });
  return result.kept.isEmpty() ? QString() : result.kept.constFirst().reason;
}
