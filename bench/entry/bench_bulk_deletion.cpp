// Deleting 400 banks with two branches each through the component: all at once, as the window does, and one after the
// other, each a deletion of its own.

#include "database/Database.h"
#include "entry/PublishedClasses.h"
#include "host/records/Deletion.h"
#include "host/records/OfficeConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/contract/cConstNodo.h"
#include "support/Race.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int bankCount = 400;
constexpr int rounds = 7;

class Office {
 public:
  Office() {
    database::PrepareDatabase(m_text, database::Content::Reference);
    m_office = std::make_unique<host::OfficeConnection>(database::CreateConnection(m_text), m_session);
    m_office->Open();
    m_session.connection = m_office.get();
    m_session.office = m_office.get();
    host::RegisterClasses(m_session);
    for (const entry::PublishedClass& published : entry::PublishedClasses()) {
      automation::RegisterClass(published.progId, published.create);
    }
    m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
    m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
    const auto connection = Look();
    connection->BeginTrans();
    for (int bank = 1; bank <= bankCount; ++bank) {
      adodb::Execute(*connection, u"INSERT INTO Bancos(IDBanco,Numero) VALUES({},'{}')", bank, QString::number(bank));
      adodb::Execute(*connection, u"INSERT INTO Sucursales(codBanco,Codigo) VALUES({0},'1'),({0},'2')", bank);
      m_targets.append({bank, QString::number(bank)});
    }
    connection->CommitTrans();
  }

  void Revive() const {
    const auto connection = Look();
    for (const char16_t* statement :
         {u"UPDATE Bancos SET Eliminado=0", u"UPDATE Sucursales SET Eliminado=0", u"DELETE FROM Eliminaciones",
          u"DELETE FROM EliminacionesRegistros", u"DELETE FROM Cambios"}) {
      connection->Execute(QString::fromUtf16(statement));
    }
  }

  void DeleteTogether() const { Delete(m_targets); }

  void DeleteOneByOne() const {
    for (const host::DeletionTarget& target : m_targets) {
      Delete({target});
    }
  }

 private:
  std::unique_ptr<adodb::Connection> Look() const {
    auto connection = database::CreateConnection(m_text);
    connection->Open();
    return connection;
  }

  void Delete(const QList<host::DeletionTarget>& targets) const {
    const host::DeletionResult result =
        host::DeleteRecords(*m_bridge, *host::FindNode(cConstNodo().Bancos()), targets, [](int) { return true; });
    if (result.deleted.size() != targets.size()) {
      qFatal("a bank stayed");
    }
  }

  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(u"kel.db"_s));
  host::Session m_session;
  std::unique_ptr<host::OfficeConnection> m_office;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  QList<host::DeletionTarget> m_targets;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const Office office;
  std::vector<bench::Contestant> contestants{{"in batches", {}}, {"one by one", {}}};
  for (int round = 0; round < rounds; ++round) {
    contestants[0].milliseconds.push_back(bench::Milliseconds([&] { office.DeleteTogether(); }));
    office.Revive();
    contestants[1].milliseconds.push_back(bench::Milliseconds([&] { office.DeleteOneByOne(); }));
    office.Revive();
  }
  bench::Report("400 banks deleted", contestants, {0.25});
  return 0;
}
