// What the connection costs beside the engine's own C interface: the same work both ways in turns, on copies of
// one database, as ratios of the medians.

#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"
#include "support/Race.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <vector>

using adodb::StatementText;
using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace {

constexpr int rows = 100000;
constexpr int rounds = 7;
constexpr int subscriptions = 1000000;

// A connection through this library and one through the C interface, with the same settings, each on its own file.
struct Contestants {
  std::unique_ptr<adodb::Connection> connection;
  std::unique_ptr<database::SqliteHandle> native;
};

void Check(sqlite3* engine, int code) {
  if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW) {
    std::fprintf(stderr, "%s\n", sqlite3_errmsg(engine));
    std::exit(1);
  }
}

QString InsertText(int i) {
  const QString code = QString::number(i % 10000).rightJustified(4, u'0');
  return StatementText(
      u"INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, codProvincia, codPais) "
      u"VALUES({0},'{1}','Oficina {0}','Calle de la Constitución, {1}','Alcalá de Henares','28801',28,35)",
      Verbatim{QString::number(i)}, code);
}

void RunText(sqlite3* engine, const QByteArray& text) {
  sqlite3_stmt* statement = nullptr;
  Check(engine, sqlite3_prepare_v2(engine, text.constData(), static_cast<int>(text.size()), &statement, nullptr));
  Check(engine, sqlite3_step(statement));
  sqlite3_finalize(statement);
}

void InsertPrepared(sqlite3* engine, const std::vector<QByteArray>& codes, const std::vector<QByteArray>& names,
                    const std::vector<QByteArray>& streets) {
  sqlite3_stmt* statement = nullptr;
  Check(engine, sqlite3_prepare_v2(engine,
                                   "INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, "
                                   "codProvincia, codPais) VALUES(?,?,?,?,?,?,?,?)",
                                   -1, &statement, nullptr));
  const auto text = [&](int position, const QByteArray& value) {
    sqlite3_bind_text(statement, position, value.constData(), static_cast<int>(value.size()), SQLITE_STATIC);
  };
  const QByteArray town = QByteArrayLiteral("Alcalá de Henares");
  for (int i = 0; i < rows; ++i) {
    const auto at = static_cast<std::size_t>(i);
    sqlite3_bind_int(statement, 1, i);
    text(2, codes[at]);
    text(3, names[at]);
    text(4, streets[at]);
    text(5, town);
    text(6, QByteArrayLiteral("28801"));
    sqlite3_bind_int(statement, 7, 28);
    sqlite3_bind_int(statement, 8, 35);
    Check(engine, sqlite3_step(statement));
    sqlite3_reset(statement);
  }
  sqlite3_finalize(statement);
}

// Inserting into an empty table every time; the rows of the last round stay for the reading.
void BenchInserts(Contestants& both) {
  std::vector<QString> texts;
  std::vector<QByteArray> bytes;
  std::vector<QByteArray> codes;
  std::vector<QByteArray> names;
  std::vector<QByteArray> streets;
  for (int i = 0; i < rows; ++i) {
    texts.push_back(InsertText(i));
    bytes.push_back(texts.back().toUtf8());
    codes.push_back(QByteArray::number(i % 10000).rightJustified(4, '0'));
    names.push_back("Oficina " + QByteArray::number(i));
    streets.push_back(u"Calle de la Constitución, "_s.toUtf8() + codes.back());
  }
  sqlite3* engine = both.native->Engine();
  const auto clearNative = [&] { both.native->Run("DELETE FROM Sucursales"); };
  std::vector<bench::Contestant> timed{{"connection",
                                        [&] {
                                          both.connection->BeginTrans();
                                          for (const QString& text : texts) {
                                            both.connection->Execute(text);
                                          }
                                          both.connection->CommitTrans();
                                        },
                                        {}},
                                       {"C interface, each text prepared and run",
                                        [&] {
                                          both.native->Run("BEGIN IMMEDIATE");
                                          for (const QByteArray& text : bytes) {
                                            RunText(engine, text);
                                          }
                                          both.native->Run("COMMIT");
                                        },
                                        {}},
                                       {"C interface, one prepared statement",
                                        [&] {
                                          both.native->Run("BEGIN IMMEDIATE");
                                          InsertPrepared(engine, codes, names, streets);
                                          both.native->Run("COMMIT");
                                        },
                                        {}}};
  for (int round = 0; round < rounds; ++round) {
    both.connection->Execute(u"DELETE FROM Sucursales"_s);
    timed[0].milliseconds.push_back(bench::Milliseconds(timed[0].work));
    clearNative();
    timed[1].milliseconds.push_back(bench::Milliseconds(timed[1].work));
    clearNative();
    timed[2].milliseconds.push_back(bench::Milliseconds(timed[2].work));
  }
  bench::Report("100,000 INSERT texts in one transaction", timed, {1.0, 3.0});
}

const QString readText =
    u"SELECT IDSucursal, Codigo, Nombre, Direccion, Poblacion, codProvincia FROM Sucursales WHERE codBanco>=0"_s;

// The keys are read but not summed: the two tables were filled at other times.
qint64 ReadByName(adodb::Connection& connection) {
  qint64 total = 0;
  qint64 keys = 0;
  const auto recordset = connection.Execute(readText);
  while (!recordset->AtEnd()) {
    keys += recordset->Field(u"IDSucursal").toInt();
    total += recordset->Field(u"Codigo").toString().size();
    total += recordset->Field(u"Nombre").toString().size();
    total += recordset->Field(u"Direccion").toString().size();
    total += recordset->Field(u"Poblacion").toString().size();
    total += recordset->Field(u"codProvincia").toInt();
    recordset->MoveNext();
  }
  return keys > 0 ? total : 0;
}

QString TextAt(sqlite3_stmt* statement, int position) {
  return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, position)),
                           sqlite3_column_bytes(statement, position));
}

qint64 ReadNative(sqlite3* engine, bool intoStrings) {
  sqlite3_stmt* statement = nullptr;
  qint64 total = 0;
  qint64 keys = 0;
  Check(engine, sqlite3_prepare_v2(engine, readText.toUtf8().constData(), -1, &statement, nullptr));
  while (sqlite3_step(statement) == SQLITE_ROW) {
    keys += sqlite3_column_int(statement, 0);
    for (int i = 1; i < 5; ++i) {
      if (intoStrings) {
        total += TextAt(statement, i).size();
      } else {
        total += sqlite3_column_text(statement, i) != nullptr ? sqlite3_column_bytes(statement, i) : 0;
      }
    }
    total += sqlite3_column_int(statement, 5);
  }
  sqlite3_finalize(statement);
  return keys > 0 ? total : 0;
}

void BenchReads(Contestants& both) {
  qint64 sums[3] = {};
  std::vector<bench::Contestant> timed{
      {"connection", [&] { sums[0] = ReadByName(*both.connection); }, {}},
      {"C interface by position, texts as QString", [&] { sums[1] = ReadNative(both.native->Engine(), true); }, {}},
      {"C interface by position, bytes left in place",
       [&] { sums[2] = ReadNative(both.native->Engine(), false); },
       {}}};
  bench::Race(timed, rounds * 3);
  bench::Report("reading 100,000 rows of six columns by name", timed, {2.0, 2.0});
  if (sums[0] != sums[1]) {
    std::fprintf(stderr, "the ways of reading disagree\n");
    std::exit(1);
  }
}

void FillSubscriptions(const database::SqliteHandle& handle) {
  handle.Run(
      "INSERT INTO TipoPublicaciones (Nombre) VALUES ('Boletín');"
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000) "
      "INSERT INTO Colaboradores (Nombre, codpais) SELECT 'Nombre ' || i, 35 FROM n;"
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
      QByteArray::number(subscriptions - 1) +
      ") INSERT INTO Suscripciones (CodColaborador, CodTipoPublicacion, CodTipoSuscripcion, NumeroEjemplares, Importe) "
      "SELECT i % 100000 + 1, 1, 1, i % 5 + 1, 10 FROM n; ANALYZE");
}

QString PriceText(const QString& price) {
  return StatementText(
      u"UPDATE Suscripciones SET Importe = NumeroEjemplares * {} WHERE IDSuscripcion IN (SELECT "
      u"Suscripciones.IDSuscripcion FROM Colaboradores INNER JOIN (Suscripciones INNER JOIN TipoPublicaciones ON "
      u"Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion) ON Colaboradores.IDColaborador = "
      u"Suscripciones.CodColaborador WHERE CodPais = 35 AND IDTipoPublicacion = 1)",
      Verbatim{price});
}

void BenchUpdate(Contestants& both) {
  std::vector<bench::Contestant> timed{{"connection", [&] { both.connection->Execute(PriceText(u"'12,50'"_s)); }, {}},
                                       {"C interface, the same with 12.50",
                                        [&] { RunText(both.native->Engine(), PriceText(u"12.50"_s).toUtf8()); },
                                        {}}};
  bench::Race(timed, 5);
  bench::Report("price update of a million rows", timed, {1.05});
}

// A list of keys as a dialog writes one: each text is translated and prepared anew, and so is the engine's.
void BenchLongList(Contestants& both) {
  QString keys;
  QByteArray places;
  for (int i = 0; i < rows; ++i) {
    keys += QString::number(i * 3) + u',';
    places += "?,";
  }
  keys.chop(1);
  places.chop(1);
  sqlite3* engine = both.native->Engine();
  std::vector<bench::Contestant> timed{
      {"connection",
       [&] { both.connection->Execute(u"SELECT COUNT(*) FROM Paises WHERE IDPais IN ("_s + keys + u')'); }},
      {"C interface, the same with ? and bound numbers", [&] {
         sqlite3_stmt* statement = nullptr;
         Check(engine,
               sqlite3_prepare_v2(engine, ("SELECT COUNT(*) FROM Paises WHERE IDPais IN (" + places + ')').constData(),
                                  -1, &statement, nullptr));
         for (int i = 0; i < rows; ++i) {
           sqlite3_bind_int(statement, i + 1, i * 3);
         }
         Check(engine, sqlite3_step(statement));
         sqlite3_finalize(statement);
       }}};
  bench::Race(timed, rounds);
  bench::Report("a list of 100,000 keys", timed, {2.0});
}

void Run(const QString& folder) {
  const QString own = folder + u"/propia.db"_s;
  const QString other = folder + u"/directa.db"_s;
  database::PrepareDatabase(database::ConnectionStringForFile(own), database::Content::Reference);
  {
    const database::SqliteHandle handle(database::ConnectionString(database::ConnectionStringForFile(own)),
                                        database::SqliteHandle::Missing::Refuse);
    FillSubscriptions(handle);
  }
  QFile::copy(own, other);
  Contestants both;
  both.connection = database::CreateConnection(database::ConnectionStringForFile(own));
  both.connection->Open();
  both.native = std::make_unique<database::SqliteHandle>(
      database::ConnectionString(database::ConnectionStringForFile(other)), database::SqliteHandle::Missing::Refuse);
  BenchInserts(both);
  BenchReads(both);
  BenchUpdate(both);
  BenchLongList(both);
}

}  // namespace

int main() {
  const QTemporaryDir folder;
  try {
    Run(folder.path());
  } catch (const automation::Error& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
