// Several hosts at a day's work on one server, beside pgbench with the same statements, prepared, as a program without
// the layer would send them: without savepoints. In turns; medians. The server waits for its disk. Arguments: seconds
// for each turn, turns.

#include "database/BenchServer.h"
#include "platform/adodb/Recordset.h"
#include "platform/adodb/Statement.h"
#include "support/Race.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>

using bench::BenchServer;
using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int banks = 2000;
constexpr int countries = 249;

// A country is opened, changed and saved; a bank is opened, a branch of it changed, one added, one deleted, and all
// of it saved.
constexpr const char* dayOfPgbench = R"sql(\set country random(1, 249)
\set bank random(1, 2000)
SELECT nombre, codigoiso FROM paises WHERE idpais = :country;
UPDATE paises SET nombre = 'Nombre nuevo', codigoiso = 'NN' WHERE idpais = :country;
SELECT numero, nombre FROM bancos WHERE idbanco = :bank;
SELECT idsucursal, codigo, nombre FROM sucursales WHERE codbanco = :bank AND eliminado = 0 ORDER BY codigo, idsucursal;
BEGIN;
UPDATE bancos SET nombre = 'Banco nuevo' WHERE idbanco = :bank;
UPDATE sucursales SET eliminado = -1 WHERE codbanco = :bank AND eliminado = 0;
INSERT INTO sucursales (codbanco, codigo, nombre) VALUES (:bank, '0001', 'Oficina nueva') RETURNING idsucursal;
COMMIT;
)sql";

void WorkThroughTheLayer(adodb::Connection& connection, int country, int bank) {
  const auto read = [&](const std::unique_ptr<adodb::Recordset>& rows) {
    for (; !rows->AtEnd(); rows->MoveNext()) {
      rows->Field(0);
    }
  };
  read(adodb::Execute(connection, u"SELECT Nombre, CodigoISO FROM Paises WHERE IDPais={}", country));
  adodb::Execute(connection, u"UPDATE Paises SET Nombre='Nombre nuevo', CodigoISO='NN' WHERE IDPais={}", country);
  read(adodb::Execute(connection, u"SELECT Numero, Nombre FROM Bancos WHERE IDBanco={}", bank));
  read(adodb::Execute(connection,
                      u"SELECT IDSucursal, Codigo, Nombre FROM Sucursales WHERE codBanco={} AND Eliminado=0 "
                      u"ORDER BY Codigo",
                      bank));
  connection.BeginTrans();
  adodb::Execute(connection, u"UPDATE Bancos SET Nombre='Banco nuevo' WHERE IDBanco={}", bank);
  adodb::Execute(connection, u"UPDATE Sucursales SET Eliminado=-1 WHERE codBanco={} AND Eliminado=0", bank);
  adodb::Execute(connection, u"INSERT INTO Sucursales (codBanco, Codigo, Nombre) VALUES({},'0001','Oficina nueva')",
                 bank);
  connection.CommitTrans();
}

struct Measured {
  double perSecond = 0;
  double p99 = 0;        ///< Milliseconds of a round.
  double processor = 0;  ///< Milliseconds of this side's processor time for a round.
};

double ProcessorMilliseconds(int who) {
  rusage usage = {};
  getrusage(who, &usage);
  const auto milliseconds = [](const timeval& time) {
    return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e3;
  };
  return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

Measured Summary(std::vector<double> latencies, double processor, int seconds) {
  if (latencies.empty()) {
    std::fputs("nothing was done\n", stderr);
    std::exit(1);
  }
  std::sort(latencies.begin(), latencies.end());
  const auto count = static_cast<double>(latencies.size());
  return {count / seconds, latencies[latencies.size() * 99 / 100], processor / count};
}

Measured Layer(const BenchServer& server, int hosts, int seconds) {
  std::vector<std::vector<double>> latencies(static_cast<std::size_t>(hosts));
  std::vector<std::unique_ptr<adodb::Connection>> connections;
  for (int i = 0; i < hosts; ++i) {
    connections.push_back(server.Connect());
  }
  const double before = ProcessorMilliseconds(RUSAGE_SELF);
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < latencies.size(); ++i) {
    threads.emplace_back([&, i] {
      std::minstd_rand random(static_cast<unsigned>(i) + 1);
      for (auto start = Clock::now(); start < end; start = Clock::now()) {
        WorkThroughTheLayer(*connections[i], 1 + static_cast<int>(random() % countries),
                            1 + static_cast<int>(random() % banks));
        latencies[i].push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
      }
    });
  }
  std::vector<double> all;
  for (std::size_t i = 0; i < threads.size(); ++i) {
    threads[i].join();
    all.insert(all.end(), latencies[i].begin(), latencies[i].end());
  }
  return Summary(std::move(all), ProcessorMilliseconds(RUSAGE_SELF) - before, seconds);
}

QString ServerPrograms() {
  QProcess asked;
  asked.start(u"pg_config"_s, {u"--bindir"_s});
  asked.waitForFinished();
  return QString::fromUtf8(asked.readAll()).trimmed();
}

// One line for each round: client, number, microseconds...
std::vector<double> LoggedLatencies(const QDir& folder) {
  std::vector<double> latencies;
  const QStringList names = folder.entryList({u"log*"_s}, QDir::Files);
  for (const QString& name : names) {
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::ReadOnly)) {
      while (!file.atEnd()) {
        latencies.push_back(file.readLine().split(' ').value(2).toDouble() / 1e3);
      }
    }
  }
  return latencies;
}

Measured Pgbench(const BenchServer& server, int hosts, int seconds) {
  const QTemporaryDir folder;
  QFile script(folder.filePath(u"day.sql"_s));
  if (!script.open(QIODevice::WriteOnly) || script.write(dayOfPgbench) < 0) {
    std::exit(1);
  }
  script.close();
  const double before = ProcessorMilliseconds(RUSAGE_CHILDREN);
  QProcess program;
  program.setStandardOutputFile(QProcess::nullDevice());
  program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"PGOPTIONS"_s, u"-c search_path=kel,pg_catalog -c jit=off"_s);
  program.setProcessEnvironment(environment);
  const QString number = QString::number(hosts);
  program.start(ServerPrograms() + u"/pgbench"_s,
                {u"-h"_s, server.Folder(), u"-U"_s, u"postgres"_s, u"-n"_s, u"-M"_s, u"prepared"_s, u"-c"_s, number,
                 u"-j"_s, number, u"-T"_s, QString::number(seconds), u"-l"_s, u"--log-prefix"_s,
                 folder.filePath(u"log"_s), u"-f"_s, script.fileName(), u"postgres"_s});
  if (!program.waitForFinished(-1) || program.exitCode() != 0) {
    std::fputs("pgbench failed\n", stderr);
    std::exit(1);
  }
  return Summary(LoggedLatencies(QDir(folder.path())), ProcessorMilliseconds(RUSAGE_CHILDREN) - before, seconds);
}

Measured Medians(const std::vector<Measured>& turns) {
  const auto median = [&](double Measured::*what) {
    std::vector<double> values;
    for (const Measured& turn : turns) {
      values.push_back(turn.*what);
    }
    return bench::Median(std::move(values));
  };
  return {median(&Measured::perSecond), median(&Measured::p99), median(&Measured::processor)};
}

void Compare(const BenchServer& server, int hosts, int seconds, int turns) {
  std::vector<Measured> layer;
  std::vector<Measured> pgbench;
  for (int turn = 0; turn < turns; ++turn) {
    layer.push_back(Layer(server, hosts, seconds));
    pgbench.push_back(Pgbench(server, hosts, seconds));
  }
  const Measured ours = Medians(layer);
  const Measured theirs = Medians(pgbench);
  std::printf(
      "%2d hosts: %7.0f rounds/s, pgbench %7.0f, ratio %.2f (1 and 8: at least 0.80); p99 %6.1f ms, %6.1f, ratio "
      "%.2f (at most 1.50); processor %.3f ms a round, %.3f, ratio %.2f (32: at most 1.25)\n",
      hosts, ours.perSecond, theirs.perSecond, ours.perSecond / theirs.perSecond, ours.p99, theirs.p99,
      ours.p99 / theirs.p99, ours.processor, theirs.processor, ours.processor / theirs.processor);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 10;
  const int turns = argc > 2 ? std::atoi(argv[2]) : 5;
  const BenchServer server(BenchServer::Disk::WaitedFor);
  bench::Run(server.PlainConnect(),
             "INSERT INTO bancos (numero, nombre) SELECT lpad(i::text, 4, '0'), 'Banco ' || i FROM "
             "generate_series(1, 2000) AS i;"
             "INSERT INTO sucursales (codbanco, codigo, nombre) SELECT i, '0001', 'Oficina' FROM "
             "generate_series(1, 2000) AS i; ANALYZE");
  for (const int hosts : {1, 8, 32}) {
    Compare(server, hosts, seconds, turns);
  }
  return 0;
}
