// A list of 200,000 records in the host's window: how long the window is held up while the list is read, and after a
// dialog, beside reading it where the window waits. Blocks are the longest turn of the event loop.

#include "database/Database.h"
#include "host/desktop/MainWindow.h"
#include "host/records/ComponentBridge.h"
#include "host/records/RecordReader.h"
#include "host/services/ServiceClasses.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/contract/cConstNodo.h"
#include "support/Race.h"

#include <QAction>
#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int records = 200'000;
constexpr int rounds = 7;

/// A component whose dialogs are accepted at once.
class Component : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void PasarDatos(QObject* /*api*/) {}
};

class Office {
 public:
  Office() {
    database::PrepareDatabase(m_text, database::Content::Reference);
    m_connection = database::CreateConnection(m_text);
    m_connection->Open();
    m_connection->BeginTrans();
    for (int i = 0; i < records; ++i) {
      adodb::Execute(*m_connection,
                     u"INSERT INTO Provincias(Nombre,CodPais,Prefijo) VALUES('Población número {}',35,'{}')",
                     adodb::Verbatim{QString::number(i)}, QString::number(i % 100));
    }
    m_connection->CommitTrans();
    m_session.connection = m_connection.get();
    m_session.settingsFile = m_folder.filePath(u"anchos.ini"_s);
    host::RegisterClasses(m_session);
    automation::RegisterClass(u"KelConfiguracion.CPrincipal"_s, [] { return std::make_unique<Component>(); });
    m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
    m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
    m_window = std::make_unique<host::MainWindow>(*m_bridge, m_text, host::WindowTexts{});
    m_window->show();
  }

  void ReadByTheWindow() const {
    m_window->ChooseNode(cConstNodo().Paises());
    Finish();
    m_window->ChooseNode(cConstNodo().Provincias());
    Finish();
  }
  void ReadWaiting() const {
    const host::SortedRecords list(host::ReadRecords(*m_connection, *host::FindNode(cConstNodo().Provincias())));
  }
  void Modify() const { m_window->findChild<QAction*>(u"actModify"_s)->trigger(); }

  /// The longest turn of the event loop since the last call, in milliseconds.
  double TakeLongestTurn() { return std::exchange(m_longest, 0); }

 private:
  void Finish() const {
    while (!m_window->IsListRead()) {
      m_longest =
          std::max(m_longest, bench::Milliseconds([] { QCoreApplication::processEvents(QEventLoop::AllEvents, 5); }));
    }
    m_longest = std::max(m_longest, bench::Milliseconds([] { QCoreApplication::processEvents(); }));
  }

  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(u"kel.db"_s));
  std::unique_ptr<adodb::Connection> m_connection;
  host::Session m_session;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  std::unique_ptr<host::MainWindow> m_window;
  mutable double m_longest = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir settings;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
  const QApplication application(argc, argv);
  Office office;
  std::vector<double> turns;
  std::vector<bench::Contestant> contestants{
      {"the window held up, choosing a node of 200,000 records", [&] { office.ReadByTheWindow(); }},
      {"reading it while the window waits", [&] { office.ReadWaiting(); }},
      {"after a dialog that modified one of them", [&] { office.Modify(); }},
  };
  for (int round = 0; round < rounds; ++round) {
    office.ReadByTheWindow();
    turns.push_back(office.TakeLongestTurn());
    contestants[1].milliseconds.push_back(bench::Milliseconds(contestants[1].work));
    contestants[2].milliseconds.push_back(bench::Milliseconds(contestants[2].work));
  }
  contestants[0].milliseconds = turns;
  bench::Report("List of 200,000 records", contestants, {0.1, 10});
  return 0;
}

#include "bench_lists.moc"
