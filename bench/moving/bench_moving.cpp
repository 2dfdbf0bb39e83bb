#include "database/BenchServer.h"
#include "database/Database.h"
#include "moving/Export.h"
#include "moving/Import.h"
#include "moving/PeopleFiles.h"
#include "platform/adodb/Statement.h"
#include "support/Race.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <array>
#include <cstdio>
#include <cstdlib>

using bench::Contestant;
using namespace Qt::StringLiterals;

// Moving in and out beside the tools of their kinds: mdb-export, the shell of SQLite, LibreOffice. Those that are not
// installed are named, and nothing is compared with them. Argument: the part that is run, all without one.

namespace {

constexpr int people = 200'000;
constexpr int sheetRows = 50'000;
constexpr int rounds = 3;
constexpr double kilo = 1024;

class Nobody : public moving::SourceListener {
 public:
  void BeginTable(const moving::SourceTable& /*table*/) override {}
  void Row(const moving::SourceRow& /*row*/) override {}
  void EndTable(qint64 /*missing*/) override {}
  void Linked(const QString& /*name*/) override {}
  void Unreadable(const QString& /*name*/) override {}
};

void Read(const QString& path) {
  Nobody nobody;
  moving::ReadForeignFile(path, nobody, {});
}

void Import(const QString& file, adodb::Connection& connection, bool isTrial) {
  moving::ImportWishes wishes;
  wishes.isTrial = isTrial;
  wishes.names.tables.insert(u"*"_s, u"Colaboradores"_s);
  if (moving::Import(file, connection, wishes).Sum(&moving::TableReport::created) == 0) {
    std::exit(1);
  }
}

/// A new database for each import that writes.
class Office {
 public:
  explicit Office(const QString& folder) : m_folder(folder) { Renew(); }

  void Renew() {
    static int number = 0;
    m_connection.reset();
    path = u"%1/oficina%2.db"_s.arg(m_folder).arg(++number);
    const QString string = database::ConnectionStringForFile(path);
    database::PrepareDatabase(string, database::Content::Reference);
    m_connection = database::CreateConnection(string);
    m_connection->Open();
  }
  adodb::Connection& Connection() { return *m_connection; }

  QString path;

 private:
  QString m_folder;
  std::unique_ptr<adodb::Connection> m_connection;
};

bool IsInstalled(const QString& program) {
  const bool is = !QStandardPaths::findExecutable(program).isEmpty();
  if (!is) {
    std::printf("%s is not installed: not compared\n", qPrintable(program));
  }
  return is;
}

QByteArray RunToEnd(const QString& program, const QStringList& arguments, const QString& input = {}) {
  QProcess process;
  process.start(program, arguments);
  process.write(input.toUtf8());
  process.closeWriteChannel();
  if (!process.waitForFinished(-1) || process.exitCode() != 0) {
    std::fprintf(stderr, "failed: %s\n", qPrintable(program));
    std::exit(1);
  }
  return process.readAllStandardOutput();
}

QByteArray Shell(const QString& database, const QString& lines) {
  return RunToEnd(u"sqlite3"_s, {u"-bail"_s, database}, lines);
}

void Convert(const QString& folder, const QString& sheet, const QString& ending) {
  RunToEnd(u"soffice"_s, {u"-env:UserInstallation=file://"_s + folder + u"/perfil"_s, u"--headless"_s,
                          u"--convert-to"_s, ending, u"--outdir"_s, folder + u"/fuera"_s, sheet});
}

// Of this program alone: getrusage would count what it was before it became this one.
double PeakOfThis() {
  QFile status(u"/proc/self/status"_s);
  status.open(QIODevice::ReadOnly);
  const QByteArray text = status.readAll();
  return text.mid(text.indexOf("VmHWM:") + 6).trimmed().split(' ').front().toDouble() / kilo;
}

// What a program of its own does that is small before, so that what it starts inherits no peak.
int PrintPeak(const QString& work, const QString& file) {
  double peak = 0;
  if (work != u"--reader") {
    const QTemporaryDir folder;
    Office office(folder.path());
    const double before = PeakOfThis();
    Import(file, office.Connection(), work == u"--preview");
    peak = PeakOfThis() - before;
  } else {
    Read(file);
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    peak = double(usage.ru_maxrss) / kilo;
  }
  std::printf("%.1f", peak);
  return 0;
}

double PeakOf(const QString& work, const QString& file) {
  return RunToEnd(QCoreApplication::applicationFilePath(), {work, file}).toDouble();
}

void ReportPeak(const QString& what, double megabytes, double most) {
  std::printf("%s: %.0f MB  (at most %.0f)\n", qPrintable(what), megabytes, most);
}

void Reading(const QString& folder) {
  const QString file = folder + u"/gente.mdb"_s;
  ReportPeak(u"kel-lector, memory"_s, PeakOf(u"--reader"_s, file), 16 + double(QFile(file).size()) / kilo / kilo);
  std::vector<Contestant> contestants = {{"read", [&] { Read(file); }}};
  std::vector<double> limits;
  if (IsInstalled(u"mdb-export"_s)) {
    contestants.push_back({"mdb-export", [&] { RunToEnd(u"mdb-export"_s, {file, u"Colaboradores"_s}); }});
    limits.push_back(1);
  }
  bench::Race(contestants, rounds);
  bench::Report("200,000 people of an .mdb", contestants, limits);
}

void Preview(const QString& folder) {
  const QString file = folder + u"/gente.mdb"_s;
  ReportPeak(u"preview of 200,000 people, memory"_s, PeakOf(u"--preview"_s, file), 64);
  Office office(folder);
  const auto race = [&](const char* what) {
    std::vector<Contestant> contestants = {{"preview", [&] { Import(file, office.Connection(), true); }},
                                           {"read", [&] { Read(file); }}};
    bench::Race(contestants, rounds);
    bench::Report(what, contestants, {3});
  };
  race("preview of 200,000 people");
  // What is asked about a row is shown with what stands in it, for which the file is read again.
  office.Connection().Execute(
      u"INSERT INTO Colaboradores (Nombre, Apellido1, CP) VALUES ('Nombre 1', 'Apellido1', '00001')"_s);
  race("the same with a question");
}

// The shell's own collation stands for that of our tables, which is the project's. Its list has all columns.
QString LikeTable(const Office& office) {
  QString made = QString::fromUtf8(Shell(office.path, u".schema Colaboradores\n"_s));
  return made.replace(u"kel_es"_s, u"NOCASE"_s).remove(u" STRICT"_s);
}

void Writing(const QString& folder) {
  const QString file = folder + u"/gente.mdb"_s;
  ReportPeak(u"200,000 people into the database, memory"_s, PeakOf(u"--writing"_s, file), 64);
  Office office(folder);
  std::vector<Contestant> contestants = {{"import", [&] {
                                            office.Renew();
                                            Import(file, office.Connection(), false);
                                          }}};
  contestants.front().work();
  std::vector<double> limits;
  if (IsInstalled(u"sqlite3"_s)) {
    const QString list = folder + u"/anchor.csv"_s;
    Shell(office.path, u".mode csv\n.once %1\nSELECT * FROM Colaboradores;\n"_s.arg(list));
    contestants.push_back({"sqlite3 .import", [&folder, list, table = LikeTable(office)] {
                             const QString shell = folder + u"/shell.db"_s;
                             QFile::remove(shell);
                             Shell(shell, table + u"\n.mode csv\n.import %1 Colaboradores\n"_s.arg(list));
                           }});
    limits.push_back(2);
  }
  bench::Race(contestants, rounds);
  bench::Report("200,000 people into the database", contestants, limits);
}

void AddOneByOne(adodb::Connection& connection, int rows) {
  adodb::Transaction transaction(connection);
  for (int i = 1; i <= rows; ++i) {
    const QString number = QString::number(i);
    adodb::Execute(connection,
                   u"INSERT INTO Colaboradores (IDColaborador, Nombre, Apellido1, Apellido2, NIF, Direccion, "
                   u"Poblacion, CP) VALUES({},'{}','{}','Otro','','{}','{}','{}')",
                   i, number, number, number, number, number);
  }
  transaction.Commit();
}

void Server(const QString& folder) {
  const QString file = folder + u"/gente.mdb"_s;
  const bench::BenchServer server(bench::BenchServer::Disk::NotWaitedFor);
  const auto connection = server.Connect();
  const bench::PlainLine line = server.PlainConnect();
  const auto empty = [&] { bench::Run(line, "TRUNCATE colaboradores"); };
  std::vector<Contestant> contestants = {{"import", [&] { Import(file, *connection, false); }},
                                         {"its inserts", [&] { AddOneByOne(*connection, people); }}};
  for (int round = 0; round < rounds; ++round) {
    for (Contestant& contestant : contestants) {
      empty();
      contestant.milliseconds.push_back(bench::Milliseconds(contestant.work));
    }
  }
  bench::Report("200,000 people into a server", contestants, {1.3});
}

void List(const QString& folder) {
  const QString list = folder + u"/lista.csv"_s;
  bench::WriteListOfPeople(list, people);
  ReportPeak(u"preview of a list of 200,000, memory"_s, PeakOf(u"--preview"_s, list), 64);
  Office office(folder);
  std::vector<Contestant> contestants = {{"preview", [&] { Import(list, office.Connection(), true); }}};
  std::vector<double> limits;
  if (IsInstalled(u"sqlite3"_s)) {
    contestants.push_back(
        {"sqlite3 .import", [&] { Shell(u":memory:"_s, u".mode csv\n.separator ;\n.import %1 p\n"_s.arg(list)); }});
    limits.push_back(2);
  }
  bench::Race(contestants, rounds);
  bench::Report("preview of a list of 200,000", contestants, limits);
}

void Out(const QString& folder) {
  Office office(folder);
  Import(folder + u"/gente.mdb"_s, office.Connection(), false);
  std::vector<Contestant> contestants = {
      {"export", [&] { moving::Export(folder + u"/fuera.csv"_s, u"Colaboradores"_s, office.Connection(), {}); }}};
  std::vector<double> limits;
  if (IsInstalled(u"sqlite3"_s)) {
    contestants.push_back({"sqlite3 .mode csv", [&] {
                             Shell(office.path,
                                   u".mode csv\n.separator ;\n.once %1/shell.csv\nSELECT * FROM "
                                   "Colaboradores;\n"_s.arg(folder));
                           }});
    limits.push_back(3);
  }
  bench::Race(contestants, rounds);
  bench::Report("200,000 people out as .csv", contestants, limits);
}

void Sheet(const QString& folder, const QString& ending) {
  const QString sheet = folder + u"/fuera/hoja."_s + ending;
  ReportPeak(u"kel-lector, memory, ."_s + ending, PeakOf(u"--reader"_s, sheet), 48);
  std::vector<Contestant> contestants = {{"read", [&] { Read(sheet); }},
                                         {"LibreOffice to .csv", [&] { Convert(folder, sheet, u"csv"_s); }}};
  bench::Race(contestants, rounds);
  bench::Report(u"50,000 people of 18 columns, .%1"_s.arg(ending).toStdString(), contestants, {1});
}

// LibreOffice makes the files, too, as a person's program would.
void Sheets(const QString& folder) {
  if (!IsInstalled(u"soffice"_s)) {
    return;
  }
  const QString list = folder + u"/hoja.csv"_s;
  bench::WriteWideListOfPeople(list, sheetRows);
  for (const QString& ending : {u"ods"_s, u"xlsx"_s}) {
    Convert(folder, list, ending);
    Sheet(folder, ending);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QString wanted = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
  if (argc == 3) {
    return PrintPeak(wanted, QString::fromLocal8Bit(argv[2]));
  }
  const QTemporaryDir folder;
  bench::WriteDesktopPeople(folder.filePath(u"gente.mdb"_s), people);
  const std::array<std::pair<QStringView, void (*)(const QString&)>, 7> parts = {{{u"reading", Reading},
                                                                                  {u"preview", Preview},
                                                                                  {u"writing", Writing},
                                                                                  {u"server", Server},
                                                                                  {u"list", List},
                                                                                  {u"out", Out},
                                                                                  {u"sheets", Sheets}}};
  for (const auto& [name, run] : parts) {
    if (wanted.isEmpty() || wanted == name) {
      run(folder.path());
    }
  }
}
