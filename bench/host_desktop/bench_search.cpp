// What a search needs of the texts of a list: folding a text of a million accented characters, and reading a list whose
// names somebody made 50 MB long.

#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "host/records/RecordReader.h"
#include "platform/contract/cConstNodo.h"
#include "platform/text/FoldForSearch.h"
#include "support/Race.h"

#include <QTemporaryDir>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 9;
constexpr int hostileRows = 12;

void BenchFolding() {
  const QString text = u"áéíóúñÁÜç "_s.repeated(100'000);
  std::vector<bench::Contestant> contestants{
      {"folding", [&] { texts::FoldForSearch(text); }},
      {"the toolkit's change of case alone", [&] { Q_UNUSED(text.toCaseFolded()) }},
  };
  bench::Race(contestants, rounds);
  bench::Report("Folding a million accented characters", contestants, {2.0});
}

void BenchHostileList(const QString& text) {
  const database::SqliteHandle native(database::ConnectionString(text), database::SqliteHandle::Missing::Refuse);
  native.Run("DELETE FROM Cabeceras; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" +
             QByteArray::number(hostileRows) +
             ") INSERT INTO Cabeceras(Nombre) SELECT 'é' || printf('%.*c', 50000000, 'x') FROM n");
  const auto connection = database::CreateConnection(text);
  connection->Open();
  std::vector<bench::Contestant> contestants{
      {"the list",
       [&] { host::SortedRecords(host::ReadRecords(*connection, *host::FindNode(cConstNodo().Cabeceras()))); }},
      {"the texts through the C interface",
       [&] {
         const database::SqliteStatement statement = native.Prepare("SELECT Nombre FROM Cabeceras");
         while (sqlite3_step(statement.get()) == SQLITE_ROW) {
           QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)),
                             sqlite3_column_bytes(statement.get(), 0));
         }
       }},
  };
  bench::Race(contestants, 3);
  bench::Report("A list of 12 names of 50 MB", contestants, {4.0});
}

}  // namespace

int main() {
  const QTemporaryDir folder;
  const QString text = database::ConnectionStringForFile(folder.filePath(u"kel.db"_s));
  database::PrepareDatabase(text, database::Content::Reference);
  BenchFolding();
  BenchHostileList(text);
  return 0;
}
