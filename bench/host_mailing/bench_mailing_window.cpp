// How long a user waits for the mailing window with 10,000 people: for the list, for the first page, for leafing, for a
// cancel, and how long the window is held up at most. Times of the window are processor time of its thread.

#include "MailingOffice.h"

#include "database/Database.h"
#include "host/mailing/window/MailingWindow.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

double Milliseconds(clockid_t clock) {
  timespec time = {};
  clock_gettime(clock, &time);
  return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double ThreadTime() {
  return Milliseconds(CLOCK_THREAD_CPUTIME_ID);
}

/// The longest work of the window's thread between two looks of a timer.
class Watch : public QObject {
 public:
  Watch() {
    m_timer.setInterval(1);
    connect(&m_timer, &QTimer::timeout, this, [this] {
      const double now = ThreadTime();
      longest = std::max(longest, now - m_last);
      m_last = now;
    });
    m_timer.start();
  }

  double longest = 0;

 private:
  QTimer m_timer;
  double m_last = ThreadTime();
};

void WaitFor(const std::function<bool()>& done) {
  while (!done()) {
    QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
}

void Say(const char* what, double milliseconds, double limit) {
  std::printf("%-48s %7.1f ms  at most %g\n", what, milliseconds, limit);
}

void MeasureWindow(const QString& connectionString, const QString& folder) {
  QElapsedTimer wall;
  wall.start();
  const double before = Milliseconds(CLOCK_PROCESS_CPUTIME_ID);
  host::MailingContext context;
  context.connectionString = connectionString;
  context.user.id = 1;
  host::MailingWindow window(context);
  window.resize(1400, 900);
  window.show();
  const double made = ThreadTime();
  Watch watch;
  const auto* list = window.findChild<QTableView*>(u"lstPersonas"_s);
  WaitFor([&] { return list->model()->rowCount() > 0; });
  window.grab();
  Say("the list of 10,000 painted, processor", Milliseconds(CLOCK_PROCESS_CPUTIME_ID) - before, 500);
  std::printf("%-48s %7lld ms\n", "  by the clock", static_cast<long long>(wall.elapsed()));
  std::printf("%-48s %7.1f ms\n", "  of it the window itself", made);
  WaitFor([&] { return !window.IsBusy(); });
  Say("the window held up at most while reading", watch.longest, 50);
  auto* page = window.findChild<QWidget*>(u"pagVista"_s);
  double start = ThreadTime();
  page->repaint();
  Say("a page of the preview, first", ThreadTime() - start, 100);
  auto* next = window.findChild<QAbstractButton*>(u"cmdSiguiente"_s);
  constexpr int leaves = 50;
  start = ThreadTime();
  for (int i = 0; i < leaves; ++i) {
    next->click();
    page->repaint();
  }
  Say("a page of the preview, leafing", (ThreadTime() - start) / leaves, 50);
  host::MailingRun run;
  host::LetterWish wish;
  wish.letter = 1;
  wish.selection = u"todas"_s;
  wish.moment = QDateTime::currentDateTime();
  host::OutputOrder order;
  order.target = folder + u"/x.pdf"_s;
  run.Start([&](host::RunControl& running) { return MakeLetters(connectionString, wish, 1, order, running); });
  WaitFor([&] { return run.Control().Done() > 100; });
  wall.restart();
  run.Cancel();
  WaitFor([&] { return !run.IsRunning(); });
  Say("a cancel, by the clock", double(wall.elapsed()), 200);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QCoreApplication::setOrganizationName(u"Kel"_s);
  QCoreApplication::setApplicationName(u"bench_mailing_window"_s);
  const QTemporaryDir folder;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
  const QString database = database::ConnectionStringForFile(folder.filePath(u"kel.db"_s));
  FillWithPeople(database);
  // Everybody, which is the first selection that was made.
  QSettings().setValue(u"Correo/Seleccion"_s, 1);
  MeasureWindow(database, folder.path());
  return 0;
}
