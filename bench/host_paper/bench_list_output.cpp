// A list of 200,000 records on its way out of the window: the files of each kind beside the least that any program has
// to do for it, and the first page of its preview. The PDF's memory is the process's largest over what it had with the
// list.

#include "host/paper/ListExport.h"
#include "host/paper/ListPages.h"
#include "paper/PageView.h"
#include "support/Race.h"
#include "support/Stopwatch.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <cstdio>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr int records = 200'000;
constexpr int rounds = 5;

host::ListTable Table() {
  host::RecordData data({{u"Número"_s},
                         {u"Nombre"_s},
                         {u"Dirección"_s},
                         {u"Usos"_s, host::ColumnKind::Number},
                         {u"Saldo"_s, host::ColumnKind::Amount}});
  for (int i = 0; i < records; ++i) {
    data.Append(i + 1, {QString::number(i).rightJustified(6, u'0'), u"Caja Rural de la Población %1"_s.arg(i),
                        u"Calle del Collado, %1"_s.arg(i % 300), i % 7, i * 1.25});
  }
  host::ListTable table{.title = u"Bancos"_s,
                        .search = {},
                        .origin = u"oficina"_s,
                        .user = u"ana"_s,
                        .rows = {data, std::vector<int>(records)},
                        .columns = {0, 1, 2, 3, 4}};
  std::iota(table.rows.rows.begin(), table.rows.rows.end(), 0);
  return table;
}

double LargestMegabytes() {
  rusage use{};
  getrusage(RUSAGE_SELF, &use);
  constexpr double kilobytesPerMegabyte = 1024;
  return double(use.ru_maxrss) / kilobytesPerMegabyte;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QTemporaryDir folder;
  const host::ListTable table = Table();
  const auto write = [&](const QString& ending) {
    return [&table, path = folder.filePath(u"lista."_s + ending)] {
      host::RunControl control;
      host::ExportList(table, path, control);
    };
  };
  const double before = LargestMegabytes();
  const bench::Stopwatch stopwatch;
  write(u"pdf"_s)();
  const bench::Elapsed pdf = stopwatch.Read();
  std::printf("PDF of %d records: %.1f s (at most 8), %.1f s of the processor, %.0f MB over the list (at most 40)\n",
              records, pdf.clock / 1000, pdf.processor / 1000, LargestMegabytes() - before);
  std::vector<bench::Contestant> preview{{"the first page of the preview",
                                          [&] {
                                            const host::ListPages pages(table, host::ListPages::Orientation::Upright);
                                            paper::PageView view(nullptr);
                                            view.SetPages(pages);
                                            view.resize(700, 700);
                                            view.grab();
                                          }},
                                         {"every text of the list looked at once", [&] {
                                            qsizetype length = 0;
                                            for (int row = 0; row < table.RowCount(); ++row) {
                                              for (int column = 0; column < table.ColumnCount(); ++column) {
                                                length += table.Text(row, column).size();
                                              }
                                            }
                                            std::printf("%s", length == 0 ? "!" : "");
                                          }}};
  bench::Race(preview, rounds);
  bench::Report("Preview of 200,000 records (at most 100 ms)", preview, {2.0});
  std::vector<bench::Contestant> files{{"ODS (at most 6 s)", write(u"ods"_s)}, {"CSV (at most 2 s)", write(u"csv"_s)}};
  bench::Race(files, 3);
  bench::Report("Files of 200,000 records", files, {12.0});
  return 0;
}
