// A letter of 5 MB read and written beside unrtf, which turns it into text; growth with the size; a letter of one page.
//
// Argument `--huge`: the largest letters that are accepted, too.

#include "documents/rtf/Rtf.h"
#include "documents/rtf/Writer.h"
#include "letters/BigLetter.h"
#include "support/Race.h"

#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextDocument>

#include <sys/resource.h>

#include <cstdio>
#include <memory>

namespace {

constexpr qsizetype megabyte = 1'000'000;
constexpr int rounds = 5;

long PeakMebibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

std::unique_ptr<QTextDocument> ReadLetter(const QByteArray& letter) {
  auto document = std::make_unique<QTextDocument>();
  const rtf::Report report = rtf::Read(letter, *document);
  if (report.outcome != rtf::Outcome::RichText) {
    qFatal("not read: %s", qPrintable(report.reason));
  }
  return document;
}

void FiveMegabytes() {
  const QByteArray letter = bench::BigLetter(5 * megabyte);
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("carta.rtf"));
  QFile file(path);
  if (!file.open(QFile::WriteOnly) || file.write(letter) != letter.size()) {
    qFatal("%s", qPrintable(file.errorString()));
  }
  file.close();
  const auto document = ReadLetter(letter);
  std::printf("letter: %lld bytes, %d paragraphs; peak after reading %ld MiB\n", static_cast<long long>(letter.size()),
              document->blockCount(), PeakMebibytes());
  const auto read = [&] { ReadLetter(letter); };
  std::vector<bench::Contestant> reading{{"reading", read}};
  std::vector<double> limits;
  if (!QStandardPaths::findExecutable(QStringLiteral("unrtf")).isEmpty()) {
    reading.push_back({"unrtf, to text", [&] {
                         QProcess unrtf;
                         unrtf.setStandardOutputFile(QProcess::nullDevice());
                         unrtf.start(QStringLiteral("unrtf"), {QStringLiteral("--text"), path});
                         unrtf.waitForFinished(120'000);
                       }});
    limits.push_back(1.0 / 3);
  }
  bench::Race(reading, rounds);
  bench::Report("Reading a letter of 5 MB", reading, limits);

  std::vector<bench::Contestant> writing{{"writing", [&] { rtf::Writer(*document).Write(); }}, {"reading it", read}};
  bench::Race(writing, rounds);
  bench::Report("Writing it after an edit", writing, {1.0});
  std::printf("peak of all of it: %ld MiB (at most 150)\n", PeakMebibytes());
}

void Growth(qsizetype largest) {
  double first = 0;
  for (qsizetype size = 4 * megabyte; size <= largest; size *= 4) {
    const QByteArray letter = bench::BigLetter(size);
    int paragraphs = 0;
    const double time = bench::Milliseconds([&] { paragraphs = ReadLetter(letter)->blockCount(); });
    const double each = time / (static_cast<double>(size) / megabyte);
    first = first == 0 ? each : first;
    std::printf("reading %3lld MB, %6d paragraphs: %8.1f ms, %.1f ms per MB, ratio to the first %.2f; peak %ld MiB\n",
                static_cast<long long>(size / megabyte), paragraphs, time, each, each / first, PeakMebibytes());
    std::fflush(stdout);
  }
}

void Page() {
  const QByteArray page = bench::OnePage();
  std::vector<bench::Contestant> contestant{{"page", [&] { ReadLetter(page); }}};
  bench::Race(contestant, 200);
  std::printf("Reading a letter of one page (%lld bytes): %.3f ms (at most 1)\n", static_cast<long long>(page.size()),
              bench::Median(contestant.front().milliseconds));
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  FiveMegabytes();
  Page();
  Growth(QCoreApplication::arguments().contains(QStringLiteral("--huge")) ? 64 * megabyte : 16 * megabyte);
  return 0;
}
