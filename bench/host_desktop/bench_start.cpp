// What the window reads beside its list, over 400,000 records: the tree's numbers by one statement and one by one, what
// wants mending, the detail of a record; what the change log adds to the saving of a country; and how long a password
// is hashed.

#include "database/Database.h"
#include "host/access/Passwords.h"
#include "host/records/Attention.h"
#include "host/records/NodeCounts.h"
#include "host/records/OfficeConnection.h"
#include "host/records/Relations.h"
#include "host/records/Session.h"
#include "platform/adodb/Statement.h"
#include "platform/contract/cConstNodo.h"
#include "support/Race.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int records = 200'000;
constexpr int rounds = 5;
constexpr int saves = 200;

std::unique_ptr<adodb::Connection> Filled(const QString& text) {
  database::PrepareDatabase(text, database::Content::Reference);
  auto connection = database::CreateConnection(text);
  connection->Open();
  connection->BeginTrans();
  for (int i = 0; i < records; ++i) {
    const adodb::Verbatim number{QString::number(i)};
    adodb::Execute(*connection, u"INSERT INTO Provincias(Nombre,CodPais,Prefijo) VALUES('Población número {}',35,'28')",
                   number);
    adodb::Execute(*connection, u"INSERT INTO Cabeceras(Nombre) VALUES('Cabecera número {}')", number);
  }
  connection->CommitTrans();
  return connection;
}

// As a dialog does: read when it opens, written when it is accepted, a request each.
void SaveCountries(adodb::Connection& connection) {
  static int number = 0;
  for (int i = 0; i < saves; ++i) {
    connection.Open();
    adodb::Execute(connection, u"SELECT * FROM Paises WHERE IDPais=35")->AtEnd();
    adodb::Execute(connection, u"UPDATE Paises SET Nombre='{}' WHERE IDPais=35", QString::number(++number));
    connection.Close();
  }
}

void BenchLog(const QString& text) {
  host::Session session;
  host::OfficeConnection noting(database::CreateConnection(text), session);
  const auto plain = database::CreateConnection(text);
  std::vector<bench::Contestant> contestants{{"with the change log", [&] { SaveCountries(noting); }},
                                             {"without it", [&] { SaveCountries(*plain); }}};
  bench::Race(contestants, rounds);
  bench::Report("A country read and saved 200 times", contestants, {1.25});
}

void BenchPassword() {
  std::vector<bench::Contestant> contestants{{"a password hashed", [] { host::HashOf(u"Olivar de Jaén 7"_s); }}};
  bench::Race(contestants, rounds);
  std::printf("A password hashed: %.0f ms (50 to 250)\n", bench::Median(contestants.front().milliseconds));
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QTemporaryDir folder;
  const QString text = database::ConnectionStringForFile(folder.filePath(u"kel.db"_s));
  const auto connection = Filled(text);
  const std::vector<host::Node>& nodes = host::NodeCatalog();
  std::vector<bench::Contestant> contestants{
      {"the tree's numbers, one statement", [&] { host::CountRecords(*connection, nodes); }},
      {"the tree's numbers, one by one",
       [&] {
         for (const host::Node& node : nodes) {
           host::CountRecords(*connection, {node});
         }
       }},
      {"what wants mending", [&] { host::FindConcerns(*connection, nodes); }},
      {"detail of a country with 200,000 provinces",
       [&] { host::ReadDetail(*connection, *host::FindNode(cConstNodo().Paises()), 35, false); }},
  };
  bench::Race(contestants, rounds);
  for (const bench::Contestant& contestant : contestants) {
    std::printf("%-50s %8.2f ms\n", contestant.name.c_str(), bench::Median(contestant.milliseconds));
  }
  BenchLog(text);
  BenchPassword();
  return 0;
}
