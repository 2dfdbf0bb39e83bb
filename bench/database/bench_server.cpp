// What the connection costs beside libpq on a server: rows added and rows read, both ways in turns, as ratios of the
// medians. Arguments: rows, rounds.

#include "database/BenchServer.h"
#include "platform/adodb/Recordset.h"
#include "platform/adodb/Statement.h"
#include "support/Race.h"

#include <array>
#include <cstdio>
#include <cstdlib>

using bench::BenchServer;
using bench::Contestant;
using bench::PlainLine;
using bench::PlainResult;
using namespace Qt::StringLiterals;

namespace {

constexpr const char* street = "Calle de la Constitución";

void AddThroughTheLayer(adodb::Connection& connection, int rows) {
  for (int i = 0; i < rows; ++i) {
    adodb::Execute(
        connection,
        u"INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, codProvincia, codPais) "
        u"VALUES({},'{}','Oficina','{}','Alcalá de Henares','28801',28,35)",
        i, QString::number(i % 10000), QString::fromUtf8(street));
  }
}

void AddByLibpq(const PlainLine& line, int rows) {
  for (int i = 0; i < rows; ++i) {
    const QByteArray bank = QByteArray::number(i);
    const QByteArray code = QByteArray::number(i % 10000);
    const std::array<const char*, 8> values = {bank.constData(),    code.constData(), "Oficina", street,
                                               "Alcalá de Henares", "28801",          "28",      "35"};
    const PlainResult result(PQexecPrepared(line.get(), "add", 8, values.data(), nullptr, nullptr, 0));
    bench::Require(line, result.get());
  }
}

qsizetype ReadByName(adodb::Connection& connection) {
  qsizetype length = 0;
  const auto rows = connection.Execute(
      u"SELECT IDSucursal, codBanco, Codigo, Nombre, Direccion, Poblacion FROM Sucursales ORDER BY IDSucursal"_s);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    length += rows->Field(u"IDSucursal").toInt() + rows->Field(u"codBanco").toInt();
    for (const auto* name : {u"Codigo", u"Nombre", u"Direccion", u"Poblacion"}) {
      length += rows->Field(name).toString().size();
    }
  }
  return length;
}

qsizetype ReadByPosition(const PlainLine& line) {
  qsizetype length = 0;
  const PlainResult rows = bench::Run(
      line, "SELECT idsucursal, codbanco, codigo, nombre, direccion, poblacion FROM sucursales ORDER BY idsucursal");
  for (int row = 0; row < PQntuples(rows.get()); ++row) {
    length += std::atoi(PQgetvalue(rows.get(), row, 0)) + std::atoi(PQgetvalue(rows.get(), row, 1));
    for (int column = 2; column < 6; ++column) {
      length += QString::fromUtf8(PQgetvalue(rows.get(), row, column), PQgetlength(rows.get(), row, column)).size();
    }
  }
  return length;
}

void RaceAdding(adodb::Connection& connection, const PlainLine& line, int rows, int rounds) {
  std::vector<Contestant> single = {{"layer", [&] { AddThroughTheLayer(connection, rows); }},
                                    {"libpq, prepared", [&] { AddByLibpq(line, rows); }}};
  bench::Race(single, rounds);
  bench::Report("rows added, each by itself", single, {1.2});
  std::vector<Contestant> together = {{"layer",
                                       [&] {
                                         connection.BeginTrans();
                                         AddThroughTheLayer(connection, rows);
                                         connection.CommitTrans();
                                       }},
                                      {"libpq, prepared, without savepoints", [&] {
                                         bench::Run(line, "BEGIN");
                                         AddByLibpq(line, rows);
                                         bench::Run(line, "COMMIT");
                                       }}};
  bench::Race(together, rounds);
  bench::Report("rows added in one transaction", together, {1.5});
}

void RaceReading(adodb::Connection& connection, const PlainLine& line, int rows, int rounds) {
  bench::Run(line, "TRUNCATE sucursales");
  connection.BeginTrans();
  AddThroughTheLayer(connection, rows);
  connection.CommitTrans();
  if (ReadByName(connection) != ReadByPosition(line)) {
    std::fputs("the two read different rows\n", stderr);
    std::exit(1);
  }
  std::vector<Contestant> reading = {{"layer", [&] { ReadByName(connection); }},
                                     {"libpq, by position", [&] { ReadByPosition(line); }}};
  bench::Race(reading, rounds);
  bench::Report("rows read by name", reading, {3});
}

}  // namespace

int main(int argc, char** argv) {
  const int rows = argc > 1 ? std::atoi(argv[1]) : 100000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  const BenchServer server(BenchServer::Disk::NotWaitedFor);
  const auto connection = server.Connect();
  const PlainLine line = server.PlainConnect();
  const PlainResult prepared(PQprepare(
      line.get(), "add",
      "INSERT INTO sucursales (codbanco, codigo, nombre, direccion, poblacion, cp, codprovincia, codpais) VALUES "
      "($1, $2, $3, $4, $5, $6, $7, $8) RETURNING idsucursal",
      0, nullptr));
  bench::Require(line, prepared.get());
  std::printf("%d rows, medians of %d\n", rows, rounds);
  RaceAdding(*connection, line, rows, rounds);
  RaceReading(*connection, line, rows, rounds);
  return 0;
}
