// A list of 200,000 people looked through before it comes in, beside sqlite3's own import: processor time, and how much
// memory it takes over what the program had.

#include "database/Database.h"
#include "moving/Import.h"
#include "support/Stopwatch.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int people = 200'000;
constexpr double megabyte = 1e6;

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return double(usage.ru_maxrss) * 1024 / megabyte;
}

double ChildrensMilliseconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto milliseconds = [](timeval time) { return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3; };
  return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

/// Returns its size in megabytes.
double WriteList(const QString& path) {
  QFile file(path);
  if (!file.open(QFile::WriteOnly)) {
    qFatal("%s", qPrintable(file.errorString()));
  }
  file.write(
      "IDColaborador;Tratamiento;Nombre;Apellido1;Apellido2;NIF;Direccion;Poblacion;CP;CodProvincia;codpais;"
      "CodDiocesis;"
      "CodEncabezado;Telefono;FechaAlta\n");
  for (int i = 1; i <= people; ++i) {
    const QByteArray n = QByteArray::number(i);
    file.write(n + ";D.ª;Adela;Abadía;Número " + n + ";" + QByteArray::number(10'000'000 + i) + "X;\"Calle Mayor, " +
               n + "\";Alcalá de Henares;28801;28;35;1;1;910000000;01/02/2003\n");
  }
  file.flush();
  return double(file.size()) / megabyte;
}

void CompareElsewhere(const QTemporaryDir& folder, const QString& list, double preview) {
  if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty()) {
    std::printf("sqlite3 is not installed: nothing to compare with\n");
    return;
  }
  const double before = ChildrensMilliseconds();
  QProcess::execute(u"sqlite3"_s,
                    {folder.filePath(u"elsewhere.db"_s), u".separator ;"_s, u".import %1 people"_s.arg(list)});
  const double elsewhere = ChildrensMilliseconds() - before;
  std::printf("sqlite3 .import: %.0f ms; ratio %.2f (at most 2)\n", elsewhere, preview / elsewhere);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QTemporaryDir folder;
  const QString connectionString = database::ConnectionStringForFile(folder.filePath(u"kel.db"_s));
  database::PrepareDatabase(connectionString, database::Content::Reference);
  const auto connection = database::CreateConnection(connectionString);
  connection->Open();
  const QString list = folder.filePath(u"Colaboradores.csv"_s);
  const double size = WriteList(list);

  moving::ImportWishes wishes;
  wishes.isTrial = true;
  const double peak = PeakMegabytes();
  const bench::Stopwatch watch;
  const moving::ImportReport report = moving::Import(list, *connection, wishes);
  const double passed = watch.Read().processor;
  if (report.Sum(&moving::TableReport::created) != people) {
    qFatal("not all would come in:\n%s", qPrintable(report.Text()));
  }
  std::printf("preview of %d people: %.0f ms; the list %.1f MB, memory %.1f MB over %.1f\n", people, passed, size,
              PeakMegabytes() - peak, peak);
  CompareElsewhere(folder, list, passed);
  return 0;
}
