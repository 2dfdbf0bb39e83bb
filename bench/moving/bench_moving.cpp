#include "database/Database.h"
#include "moving/Export.h"
#include "moving/Import.h"
#include "support/DesktopFile.h"
#include "support/Race.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

// Moving in and out beside the tools of their kinds: mdb-export, the shell of SQLite, LibreOffice. Those that are not
// installed are named, and nothing is compared with them.

namespace {

constexpr int people = 200'000;
constexpr int sheetRows = 50'000;
constexpr int rounds = 3;

const QStringList columns = {u"Nombre"_s,    u"Apellido1"_s, u"Apellido2"_s, u"NIF"_s,
                             u"Direccion"_s, u"Poblacion"_s, u"CP"_s};

QStringList PersonAt(int i) {
  const QString number = QString::number(i);
  return {u"Nombre "_s + number,
          u"Apellido"_s + QString::number(i % 997),
          u"Otro"_s,
          QString(),
          u"Calle Mayor, "_s + number,
          u"Población "_s + QString::number(i % 500),
          QString::number(i % 50'000).rightJustified(5, u'0')};
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    std::exit(1);
  }
}

QByteArray DesktopPeople() {
  support::DesktopFile file;
  QList<support::DesktopFile::Column> defined = {{u"IDColaborador"_s, support::DesktopFile::Long}};
  for (const QString& column : columns) {
    defined.append({column, support::DesktopFile::Text});
  }
  file.AddTable(u"Colaboradores"_s, defined);
  for (int i = 1; i <= people; ++i) {
    support::DesktopFile::Row row = {i};
    for (const QString& text : PersonAt(i)) {
      row.append(text);
    }
    file.AddRow(row);
  }
  return file.Bytes();
}

QByteArray ListOfPeople(int count) {
  QByteArray list = "IDColaborador;" + columns.join(u';').toUtf8() + '\n';
  for (int i = 1; i <= count; ++i) {
    list += QByteArray::number(i) + ";\"" + PersonAt(i).join(u"\";\""_s).toUtf8() + "\"\n";
  }
  return list;
}

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

/// A new database for each import that writes.
class Office {
 public:
  explicit Office(const QString& folder) : m_folder(folder) { Renew(); }

  void Renew() {
    m_connection.reset();
    const QString file = u"%1/oficina%2.db"_s.arg(m_folder).arg(++m_number);
    const QString string = database::ConnectionStringForFile(file);
    database::PrepareDatabase(string, database::Content::Reference);
    m_connection = database::CreateConnection(string);
    m_connection->Open();
    path = file;
  }
  void Import(const QString& file, bool isTrial) {
    moving::ImportWishes wishes;
    wishes.isTrial = isTrial;
    const moving::ImportReport report = moving::Import(file, *m_connection, wishes);
    if (report.Sum(&moving::TableReport::created) == 0) {
      std::exit(1);
    }
  }
  adodb::Connection& Connection() { return *m_connection; }

  QString path;

 private:
  QString m_folder;
  int m_number = 0;
  std::unique_ptr<adodb::Connection> m_connection;
};

bool IsInstalled(const QString& program) {
  const bool is = !QStandardPaths::findExecutable(program).isEmpty();
  if (!is) {
    std::printf("%s is not installed: not compared\n", qPrintable(program));
  }
  return is;
}

/// Gives the shell its lines, and ends this program where it fails.
void Shell(const QString& database, const QString& lines) {
  QProcess shell;
  shell.setStandardOutputFile(QProcess::nullDevice());
  shell.start(u"sqlite3"_s, {u"-bail"_s, database});
  shell.write(lines.toUtf8());
  shell.closeWriteChannel();
  if (!shell.waitForFinished(-1) || shell.exitCode() != 0) {
    std::exit(1);
  }
}

void Reading(const QString& file) {
  Read(file);
  rusage usage = {};
  getrusage(RUSAGE_CHILDREN, &usage);
  constexpr double kilo = 1024;
  std::printf("kel-lector: %.0f MB for a file of %.0f MB (at most 16 more)\n", double(usage.ru_maxrss) / kilo,
              double(QFile(file).size()) / kilo / kilo);
  std::vector<bench::Contestant> contestants = {{"read", [&] { Read(file); }}};
  std::vector<double> limits;
  if (IsInstalled(u"mdb-export"_s)) {
    contestants.push_back({"mdb-export", [&] {
                             QProcess exporter;
                             exporter.setStandardOutputFile(QProcess::nullDevice());
                             exporter.start(u"mdb-export"_s, {file, u"Colaboradores"_s});
                             exporter.waitForFinished(-1);
                           }});
    limits.push_back(1);
  }
  bench::Race(contestants, rounds);
  bench::Report("200,000 people of an .mdb", contestants, limits);
}

void ComingIn(const QString& folder, const QString& file) {
  Office office(folder);
  std::vector<bench::Contestant> contestants = {{"preview", [&] { office.Import(file, true); }},
                                                {"read", [&] { Read(file); }}};
  bench::Race(contestants, rounds);
  bench::Report("preview of 200,000 people", contestants, {3});

  std::vector<bench::Contestant> writers = {{"import", [&] {
                                               office.Renew();
                                               office.Import(file, false);
                                             }}};
  std::vector<double> limits;
  if (IsInstalled(u"sqlite3"_s)) {
    // Its collation is the shell's own, cheaper than that of our indexes.
    writers.push_back({"sqlite3 .import", [&] {
                         const QString table = folder + u"/shell.db"_s;
                         QFile::remove(table);
                         Shell(table,
                               u"CREATE TABLE p (IDColaborador INTEGER PRIMARY KEY, %1 TEXT COLLATE NOCASE);"
                               "CREATE INDEX a ON p(Apellido1);CREATE INDEX b ON p(Nombre);CREATE INDEX c ON "
                               "p(NIF);\n.mode csv\n.separator ;\n.import --skip 1 %2 p\n"_s.arg(
                                   columns.join(u" TEXT COLLATE NOCASE, "_s), folder + u"/lista.csv"_s));
                       }});
    limits.push_back(2);
  }
  bench::Race(writers, 1);
  bench::Report("200,000 people into the database", writers, limits);
}

void Lists(const QString& folder) {
  Office office(folder);
  const QString list = folder + u"/lista.csv"_s;
  moving::ImportWishes wishes;
  wishes.isTrial = true;
  wishes.names.tables.insert(u"*"_s, u"Colaboradores"_s);
  std::vector<bench::Contestant> readers = {{"preview", [&] { moving::Import(list, office.Connection(), wishes); }}};
  const bool hasShell = IsInstalled(u"sqlite3"_s);
  if (hasShell) {
    readers.push_back(
        {"sqlite3 .import", [&] { Shell(u":memory:"_s, u".mode csv\n.separator ;\n.import %1 p\n"_s.arg(list)); }});
  }
  bench::Race(readers, rounds);
  bench::Report("preview of a list of 200,000", readers, std::vector<double>(hasShell ? 1 : 0, 2));

  wishes.isTrial = false;
  moving::Import(list, office.Connection(), wishes);
  std::vector<bench::Contestant> writers = {
      {"export", [&] { moving::Export(folder + u"/fuera.csv"_s, u"Colaboradores"_s, office.Connection(), {}); }}};
  if (hasShell) {
    writers.push_back({"sqlite3 .mode csv", [&] {
                         Shell(office.path,
                               u".mode csv\n.separator ;\n.once %1/shell.csv\nSELECT * FROM "
                               "Colaboradores;\n"_s.arg(folder));
                       }});
  }
  bench::Race(writers, rounds);
  bench::Report("200,000 people out as .csv", writers, std::vector<double>(hasShell ? 1 : 0, 3));
}

void Sheets(const QString& folder) {
  Office office(folder);
  WriteFile(folder + u"/Colaboradores.csv"_s, ListOfPeople(sheetRows));
  office.Import(folder + u"/Colaboradores.csv"_s, false);
  const QString sheet = folder + u"/hoja.ods"_s;
  moving::Export(sheet, u"Colaboradores"_s, office.Connection(), {});
  std::vector<bench::Contestant> readers = {{"read", [&] { Read(sheet); }}};
  std::vector<double> limits;
  if (IsInstalled(u"soffice"_s)) {
    readers.push_back({"LibreOffice to .csv", [&] {
                         QProcess::execute(u"soffice"_s,
                                           {u"-env:UserInstallation=file://"_s + folder + u"/perfil"_s, u"--headless"_s,
                                            u"--convert-to"_s, u"csv"_s, u"--outdir"_s, folder + u"/fuera"_s, sheet});
                       }});
    limits.push_back(1);
  }
  bench::Race(readers, rounds);
  bench::Report("an .ods of 50,000 people", readers, limits);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"gente.mdb"_s);
  WriteFile(file, DesktopPeople());
  WriteFile(folder.filePath(u"lista.csv"_s), ListOfPeople(people));
  Reading(file);
  ComingIn(folder.path(), file);
  Lists(folder.path());
  Sheets(folder.path());
}
