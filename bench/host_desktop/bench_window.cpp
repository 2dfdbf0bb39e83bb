// The host's window over 400,000 records: from its beginning to the painted list, beside a window that has that list
// and nothing else (no start page, no numbers in the tree, no change log); and what it costs while nobody uses it.

#include "LongLists.h"

#include "database/Database.h"
#include "host/desktop/MainWindow.h"
#include "host/desktop/RecordList.h"
#include "host/records/ComponentBridge.h"
#include "host/records/DatabaseThread.h"
#include "host/records/OfficeConnection.h"
#include "host/records/RecordLoader.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/contract/cConstNodo.h"
#include "support/Race.h"
#include "support/Stopwatch.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QSettings>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 5;
constexpr std::chrono::seconds patience{20};
constexpr std::chrono::seconds settling{20};  // What was written last is looked at for a while.
constexpr std::chrono::seconds idle{20};
constexpr std::chrono::seconds wholeIdle{120};

/// Sees when a list has been painted with its records.
class PaintedList : public QObject {
 public:
  explicit PaintedList(host::RecordList& list) : m_list(list) { list.viewport()->installEventFilter(this); }

  void Wait() const {
    const QDeadlineTimer limit(patience);
    while (!m_isPainted) {
      if (limit.hasExpired()) {
        qFatal("the list was not painted");
      }
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
  }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    m_isPainted = m_isPainted || (event->type() == QEvent::Paint && m_list.Records().TotalCount() >= bench::longList);
    return false;
  }

 private:
  host::RecordList& m_list;
  bool m_isPainted = false;
};

/// What the program has when it starts: the window, its connection and its log.
class Program {
 public:
  explicit Program(const QString& text) : m_office(database::CreateConnection(text), m_session) {
    m_session.connection = &m_office;
    m_session.office = &m_office;
    m_office.Open();
    host::RegisterClasses(m_session);
    m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
    m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
    m_window = std::make_unique<host::MainWindow>(*m_bridge, text, host::WindowTexts{});
    m_window->show();
    m_window->ChooseNode(host::homeNode);
    const PaintedList list(*m_window->findChild<host::RecordList*>(u"recordList"_s));
    m_window->ChooseNode(cConstNodo().Provincias());
    list.Wait();
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() { host::UnregisterClasses(); }

 private:
  host::Session m_session;
  host::OfficeConnection m_office;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  std::unique_ptr<host::MainWindow> m_window;
};

/// The same list in a window of its own.
class ListAlone {
 public:
  explicit ListAlone(const QString& text) : m_thread([text] { return database::CreateConnection(text); }) {
    QObject::connect(&m_loader, &host::RecordLoader::Loaded, &m_list,
                     [this](host::SortedRecords& read) { m_list.Show(std::move(read)); });
    m_list.resize(width, height);
    m_list.show();
    const PaintedList list(m_list);
    m_loader.Load(*host::FindNode(cConstNodo().Provincias()), 0);
    list.Wait();
  }

 private:
  static constexpr int width = 900;
  static constexpr int height = 500;

  host::DatabaseThread m_thread;
  host::RecordLoader m_loader{m_thread};
  host::RecordList m_list;
};

// What ends the window is not measured.
template <typename Started>
double StartOf(const QString& text) {
  std::unique_ptr<Started> started;
  return bench::Milliseconds([&] { started = std::make_unique<Started>(text); });
}

void RunFor(std::chrono::milliseconds time) {
  QEventLoop loop;
  QTimer::singleShot(time, &loop, &QEventLoop::quit);
  loop.exec();
}

// In milliseconds of the processor for 120 seconds.
double ProcessorOfIdleTime() {
  const bench::Stopwatch watch;
  RunFor(idle);
  return watch.Read().processor * (wholeIdle / idle);
}

// Two threads that wake each other once a second, which no program is without that looks at its database beside its
// window.
double ProcessorOfWakingAlone() {
  QThread thread;
  QObject worker;
  worker.moveToThread(&thread);
  thread.start();
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &worker, [&] { QMetaObject::invokeMethod(&timer, [] {}); });
  timer.start(std::chrono::seconds{1});
  const double processor = ProcessorOfIdleTime();
  thread.quit();
  thread.wait();
  return processor;
}

void BenchIdle(const QString& text) {
  double window = 0;
  {
    const Program program(text);
    RunFor(settling);
    window = ProcessorOfIdleTime();
  }
  std::printf("Processor of 120 idle seconds, from 20 measured: %.1f ms (at most 12), waking two threads alone %.1f\n",
              window, ProcessorOfWakingAlone());
}

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir settings;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
  const QApplication application(argc, argv);
  const QString text = database::ConnectionStringForFile(settings.filePath(u"kel.db"_s));
  bench::MakeLongLists(text);
  std::vector<double> whole;
  std::vector<double> alone;
  for (int round = 0; round < rounds; ++round) {
    whole.push_back(StartOf<Program>(text));
    alone.push_back(StartOf<ListAlone>(text));
  }
  std::printf("From the start to the painted list of 200,000: %.0f ms, the list alone %.0f, %.0f more (at most 400)\n",
              bench::Median(whole), bench::Median(alone), bench::Median(whole) - bench::Median(alone));
  std::fflush(stdout);
  BenchIdle(text);
  return 0;
}
