// A list of 200,000 records in the host's window: the longest turn of the event loop while it is read, sorted by a
// click, searched, and while another program changes some of its records.

#include "database/Database.h"
#include "host/desktop/MainWindow.h"
#include "host/desktop/RecordList.h"
#include "host/records/ComponentBridge.h"
#include "host/records/OfficeConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/contract/cConstNodo.h"
#include "support/Race.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QScopeGuard>
#include <QSettings>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr int records = 200'000;
constexpr int rounds = 5;
constexpr std::chrono::seconds patience{10};

/// A component whose dialogs are accepted at once.
class Component : public QObject {
  Q_OBJECT

 public:
  Q_INVOKABLE void PasarDatos(QObject* /*api*/) {}
};

/// Somebody's connection that notes what it writes.
struct Person {
  explicit Person(const QString& text) : office(database::CreateConnection(text), session) {
    session.connection = &office;
    session.office = &office;
  }

  host::Session session;
  host::OfficeConnection office;
};

/// The longest turn of an event loop in milliseconds, by the clock and of the processor for its thread.
struct Turn {
  double clock = 0;
  double processor = 0;

  void Lengthen(const bench::Work& work) {
    const double before = Processor();
    clock = std::max(clock, bench::Milliseconds(work));
    processor = std::max(processor, Processor() - before);
  }

 private:
  static double Processor() {
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e6;
  }
};

class Office {
 public:
  Office() {
    Fill();
    m_me.session.settingsFile = m_folder.filePath(u"anchos.ini"_s);
    host::RegisterClasses(m_me.session);
    automation::RegisterClass(u"KelConfiguracion.CPrincipal"_s, [] { return std::make_unique<Component>(); });
    m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
    m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_me.session);
    m_window = std::make_unique<host::MainWindow>(*m_bridge, m_text, host::WindowTexts{});
    m_list = m_window->findChild<host::RecordList*>(u"recordList"_s);
    m_window->show();
    m_other.office.Open();
  }

  void Read() {
    m_window->ChooseNode(cConstNodo().Paises());
    Wait([&] { return m_window->IsListRead(); });
    m_window->ChooseNode(cConstNodo().Provincias());
    Wait([&] { return m_window->IsListRead(); });
  }
  void SortBy(int column) {
    m_order = m_order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_longest.Lengthen([&] { m_list->sortByColumn(column, m_order); });
    Wait([&] { return !m_list->Records().IsSorting(); });
  }
  void Search() {
    auto* box = m_window->findChild<QLineEdit*>(u"txtSearch"_s);
    for (const QString& typed : {u"p"_s, u"po"_s, u"pob 77"_s, QString()}) {
      m_longest.Lengthen([&] { box->setText(typed); });
      Wait([] { return true; });
    }
  }
  void Modify() {
    m_longest.Lengthen([&] { m_window->findChild<QAction*>(u"actModify"_s)->trigger(); });
    Wait([] { return true; });
  }
  void ChangeByAnother(int count) {
    const QString name = u"Aldea %1 "_s.arg(++m_changes);
    m_other.office.BeginTrans();
    for (int i = 0; i < count; ++i) {
      adodb::Execute(m_other.office, u"UPDATE Provincias SET Nombre='{}' WHERE IDProvincia={}",
                     name + QString::number(i), 1000 + i);
    }
    m_other.office.CommitTrans();
    Wait([&] {
      const host::RecordModel& shown = m_list->Records();
      return shown.LineAt(shown.RowOf(1000 + count - 1)).startsWith(name);
    });
  }

  /// Since the last call.
  Turn TakeLongest() { return std::exchange(m_longest, {}); }

 private:
  void Fill() {
    database::PrepareDatabase(m_text, database::Content::Reference);
    const auto connection = database::CreateConnection(m_text);
    connection->Open();
    connection->BeginTrans();
    for (int i = 0; i < records; ++i) {
      adodb::Execute(*connection,
                     u"INSERT INTO Provincias(Nombre,CodPais,Prefijo) VALUES('Población número {}',35,'{}')",
                     adodb::Verbatim{QString::number(i)}, QString::number(i % 100));
    }
    connection->CommitTrans();
  }
  // Until it is so, and what that brought along is done.
  void Wait(const std::function<bool()>& isSo) {
    bool wasSo = false;
    const QDeadlineTimer limit(patience);
    const auto complain = qScopeGuard([&] {
      if (!wasSo) {
        std::puts("The list did not follow within ten seconds.");
      }
    });
    for (int after = 0; after < 10 && !limit.hasExpired(); after += wasSo ? 1 : 0) {
      m_longest.Lengthen([] { QCoreApplication::processEvents(); });
      wasSo = wasSo || isSo();
      QThread::msleep(1);
    }
  }

  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(u"kel.db"_s));
  Person m_me{m_text};
  Person m_other{m_text};
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  std::unique_ptr<host::MainWindow> m_window;
  host::RecordList* m_list = nullptr;
  Qt::SortOrder m_order = Qt::AscendingOrder;
  int m_changes = 0;
  Turn m_longest;
};

struct Act {
  const char* name;
  bench::Work work;
  std::vector<double> clock = {};
  std::vector<double> processor = {};
};

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir settings;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
  const QApplication application(argc, argv);
  Office office;
  std::vector<Act> acts{
      {"reading it", [&] { office.Read(); }},
      {"sorting it by a text", [&] { office.SortBy(0); }},
      {"sorting it by another column", [&] { office.SortBy(2); }},
      {"searching it", [&] { office.Search(); }},
      {"a dialog that modified a record", [&] { office.Modify(); }},
      {"another program changed a record", [&] { office.ChangeByAnother(1); }},
      {"another program changed 1,000 records", [&] { office.ChangeByAnother(1000); }},
  };
  for (int round = 0; round < rounds; ++round) {
    for (Act& act : acts) {
      act.work();
      const Turn longest = office.TakeLongest();
      act.clock.push_back(longest.clock);
      act.processor.push_back(longest.processor);
    }
  }
  std::printf(
      "Longest turn of the event loop, 200,000 records, %d rounds: median by the clock (at most 50 ms), worst,\n"
      "median and worst of the processor for the window's thread\n",
      rounds);
  for (const Act& act : acts) {
    std::printf("  %-40s %7.1f %7.1f %7.1f %7.1f ms\n", act.name, bench::Median(act.clock),
                *std::ranges::max_element(act.clock), bench::Median(act.processor),
                *std::ranges::max_element(act.processor));
  }
  return 0;
}

#include "bench_lists.moc"
