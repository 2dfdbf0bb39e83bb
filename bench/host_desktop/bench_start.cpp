// What the window reads beside its list, over 400,000 records: the tree's numbers by one statement and one by one, what
// wants mending, the detail of a record; and how long a click on a column's heading sorts 200,000.

#include "database/Database.h"
#include "host/records/Attention.h"
#include "host/records/NodeCounts.h"
#include "host/records/RecordModel.h"
#include "host/records/RecordReader.h"
#include "host/records/Relations.h"
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

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QTemporaryDir folder;
  const auto connection = Filled(database::ConnectionStringForFile(folder.filePath(u"kel.db"_s)));
  const std::vector<host::Node>& nodes = host::NodeCatalog();
  const host::Node& provinces = *host::FindNode(cConstNodo().Provincias());
  host::RecordModel list;
  list.SetRecords(host::ReadRecords(*connection, provinces));
  Qt::SortOrder order = Qt::AscendingOrder;
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
      {"sorting 200,000 records by a click",
       [&] {
         order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
         list.sort(order == Qt::AscendingOrder ? 0 : 2, order);
       }},
  };
  bench::Race(contestants, rounds);
  for (const bench::Contestant& contestant : contestants) {
    std::printf("%-50s %8.2f ms\n", contestant.name.c_str(), bench::Median(contestant.milliseconds));
  }
  return 0;
}
