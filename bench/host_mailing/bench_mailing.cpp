// Letters and labels for 10,000 invented people. Each measurement is a process of its own, so that its peak of memory
// is its own, too; figures are processor time and peak, and their ratios.

#include "MailingOffice.h"

#include "database/Database.h"
#include "documents/rtf/Rtf.h"
#include "host/mailing/output/Outputs.h"
#include "host/mailing/pieces/ReadMailing.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

using namespace Qt::StringLiterals;

namespace {

void Make(const QString& what, bool all, const QString& connectionString, const QString& target) {
  host::RunControl control;
  host::LetterWish letters;
  letters.letter = 1;
  letters.moment = QDateTime::currentDateTime();
  letters.selection = all ? u"todas"_s : u"algunas"_s;
  if (what == u"labels"_s) {
    host::LabelWish labels;
    labels.sheet = 1;
    labels.selection = letters.selection;
    host::WritePdf(*host::ReadLabels(connectionString, labels, 1), target, control);
    return;
  }
  const auto mailing = host::ReadLetters(connectionString, letters, 1);
  if (what == u"letters"_s) {
    host::WritePdf(*mailing, target, control);
  } else if (what == u"pdfs"_s) {
    host::WritePdfFiles(*mailing, target, control);
  } else if (what == u"rtfs"_s) {
    host::WriteFiles(
        *mailing, target, u".rtf"_s, [&](int letter) { return rtf::Write(*mailing->Filled(letter)); }, control);
  }
}

struct Cost {
  double seconds = 0;
  double megabytes = 0;
};

/// Runs this program again for one piece of work.
Cost Measure(const char* what, bool all, const QTemporaryDir& folder) {
  const QByteArray target = folder.filePath(QString::fromLatin1(what) + (all ? u"10"_s : u"1"_s)).toLocal8Bit();
  const QByteArray database = folder.path().toLocal8Bit();
  const pid_t child = fork();
  if (child == 0) {
    execl("/proc/self/exe", "bench_mailing", what, all ? "all" : "some", database.constData(), target.constData(),
          static_cast<char*>(nullptr));
    _exit(1);
  }
  int status = 0;
  rusage usage = {};
  wait4(child, &status, 0, &usage);
  if (status != 0) {
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
  }
  const auto seconds = [](timeval time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
  const Cost cost{seconds(usage.ru_utime) + seconds(usage.ru_stime), double(usage.ru_maxrss) / 1024};
  std::printf("%-10s %6d   %7.2f s   %6.1f MB\n", what, all ? everybody : some, cost.seconds, cost.megabytes);
  std::fflush(stdout);
  return cost;
}

void Compare(const char* what, double value, double limit) {
  std::printf("%-48s %7.2f   at most %g\n", what, value, limit);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const auto database = [](const QString& folder) { return database::ConnectionStringForFile(folder + u"/kel.db"_s); };
  if (argc > 4) {
    Make(QString::fromLatin1(argv[1]), std::string(argv[2]) == "all", database(QString::fromLocal8Bit(argv[3])),
         QString::fromLocal8Bit(argv[4]));
    return 0;
  }
  const QTemporaryDir folder;
  FillWithPeople(database(folder.path()));
  const Cost start = Measure("nothing", false, folder);
  const Cost read = Measure("nothing", true, folder);
  const Cost labels = Measure("labels", true, folder);
  const Cost letters = Measure("letters", false, folder);
  const Cost allLetters = Measure("letters", true, folder);
  const Cost pdfs = Measure("pdfs", false, folder);
  const Cost rtfs = Measure("rtfs", false, folder);
  Compare("10,000 labels, seconds", labels.seconds, 2);
  Compare("10,000 labels, MB over the start", labels.megabytes - start.megabytes, 32);
  Compare("10,000 letters to 1,000", allLetters.seconds / letters.seconds, 11);
  Compare("their peak, MB over that of 1,000", allLetters.megabytes - letters.megabytes, 16);
  Compare("10,000 letters, MB over their people", allLetters.megabytes - read.megabytes, 32);
  Compare("a PDF for each person to one PDF", pdfs.seconds / letters.seconds, 2);
  Compare("an RTF for each person to one PDF", rtfs.seconds / letters.seconds, 0.3);
  return 0;
}
