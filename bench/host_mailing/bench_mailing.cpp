// Letters and labels for 10,000 invented people. Each measurement is a process of its own, so that its peak of memory
// is its own, too; figures are processor time and peak, and their ratios.

#include "MailingOffice.h"

#include "database/Database.h"
#include "documents/rtf/Rtf.h"
#include "host/mailing/output/Outputs.h"
#include "host/mailing/pieces/ReadMailing.h"
#include "host_mailing/Anchors.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <string>

using namespace Qt::StringLiterals;

using bench::Cost;

namespace {

void Make(const QString& what, bool all, const QString& connectionString, const QString& target) {
  host::RunControl control;
  host::LetterWish letters;
  letters.letter = what == u"scanned"_s ? 2 : 1;
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
  if (what == u"letters"_s || what == u"scanned"_s) {
    host::WritePdf(*mailing, target, control);
  } else if (what == u"pdfs"_s) {
    host::WritePdfFiles(*mailing, target, control);
  } else if (what == u"rtfs"_s) {
    host::WriteFiles(
        *mailing, target, u".rtf"_s, [&](int letter) { return rtf::Write(*mailing->Filled(letter)); }, control);
  }
}

Cost Told(const char* what, int count, const Cost& cost) {
  std::printf("%-18s %6d   %7.2f s   %6.1f MB\n", what, count, cost.seconds, cost.megabytes);
  std::fflush(stdout);
  return cost;
}

/// Runs this program again for one piece of work.
Cost Measure(const char* what, bool all, const QTemporaryDir& folder) {
  const QString target = folder.filePath(QString::fromLatin1(what) + (all ? u"10"_s : u"1"_s));
  return Told(what, all ? everybody : some,
              bench::CostOf(
                  {u"/proc/self/exe"_s, QString::fromLatin1(what), all ? u"all"_s : u"some"_s, folder.path(), target}));
}

/// In memory where that can be: what a disk's file system does for a thousand files is not what is compared.
QString Place() {
  const QString memory = u"/dev/shm"_s;
  return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/bench_mailing-XXXXXX"_s;
}

void Compare(const char* what, double value, double limit) {
  std::printf("%-48s %7.2f   at most %g\n", what, value, limit);
}

void CompareElsewhere(const QTemporaryDir& folder, const Cost& labels, const Cost& letters) {
  if (const auto cost = bench::LabelsElsewhere(folder.path(), some)) {
    Told("gLabels, labels", some, *cost);
    Compare("10,000 labels to its 1,000", labels.seconds / cost->seconds, 1);
  }
  if (const auto cost = bench::LettersElsewhere(folder.path(), UsualLetter(), some)) {
    Told("LibreOffice, merge", some, *cost);
    Compare("1,000 letters to its 1,000", letters.seconds / cost->seconds, 0.05);
  }
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
  const QTemporaryDir folder(Place());
  std::printf("files in %s\n", qPrintable(folder.path()));
  FillWithPeople(database(folder.path()));
  const Cost start = Measure("nothing", false, folder);
  const Cost read = Measure("nothing", true, folder);
  const Cost labels = Measure("labels", true, folder);
  const Cost letters = Measure("letters", false, folder);
  const Cost allLetters = Measure("letters", true, folder);
  const Cost scanned = Measure("scanned", false, folder);
  const Cost pdfs = Measure("pdfs", false, folder);
  const Cost rtfs = Measure("rtfs", false, folder);
  Compare("10,000 labels, seconds", labels.seconds, 2);
  Compare("10,000 labels, MB over the start", labels.megabytes - start.megabytes, 32);
  Compare("10,000 letters to 1,000", allLetters.seconds / letters.seconds, 11);
  Compare("their peak, MB over that of 1,000", allLetters.megabytes - letters.megabytes, 16);
  Compare("10,000 letters, MB over their people", allLetters.megabytes - read.megabytes, 32);
  Compare("1,000 with a scanned sheet to 1,000", scanned.seconds / letters.seconds, 1.5);
  Compare("a PDF for each person to one PDF", pdfs.seconds / letters.seconds, 2);
  Compare("an RTF for each person to one PDF", rtfs.seconds / letters.seconds, 0.3);
  CompareElsewhere(folder, labels, letters);
  return 0;
}
