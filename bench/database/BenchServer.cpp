#include "database/BenchServer.h"

#include "database/Database.h"

#include <QFile>
#include <QProcess>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace bench {

BenchServer::BenchServer(Disk disk) {
  QStringList arguments{QStringLiteral(KEL_SERVER), u"start"_s, m_own.filePath(u"place"_s)};
  if (disk == Disk::WaitedFor) {
    arguments += u"durable"_s;
  }
  QFile place(m_own.filePath(u"place"_s));
  if (QProcess::execute(u"sh"_s, arguments) != 0 || !place.open(QIODevice::ReadOnly)) {
    std::fputs("no server\n", stderr);
    std::exit(1);
  }
  m_folder = QString::fromUtf8(place.readAll()).trimmed();
  database::PrepareDatabase(u"Motor=postgres;Servidor=%1;Usuario=postgres;Base=postgres"_s.arg(m_folder),
                            database::Content::Reference);
}

BenchServer::~BenchServer() {
  QProcess::execute(u"sh"_s, {QStringLiteral(KEL_SERVER), u"stop"_s, m_own.filePath(u"place"_s)});
}

std::unique_ptr<adodb::Connection> BenchServer::Connect() const {
  auto connection =
      database::CreateConnection(u"Motor=postgres;Servidor=%1;Usuario=postgres;Base=postgres"_s.arg(m_folder));
  connection->Open();
  return connection;
}

PlainLine BenchServer::PlainConnect() const {
  const QString address =
      u"host='%1' user=postgres dbname=postgres options='-c search_path=kel,pg_catalog'"_s.arg(m_folder);
  PlainLine line(PQconnectdb(qUtf8Printable(address)));
  if (PQstatus(line.get()) != CONNECTION_OK) {
    std::fputs(PQerrorMessage(line.get()), stderr);
    std::exit(1);
  }
  return line;
}

PlainResult Run(const PlainLine& line, const QByteArray& sql) {
  PlainResult result(PQexec(line.get(), sql.constData()));
  Require(line, result.get());
  return result;
}

void Require(const PlainLine& line, const PGresult* result) {
  const ExecStatusType status = PQresultStatus(result);
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
    std::fputs(PQerrorMessage(line.get()), stderr);
    std::exit(1);
  }
}

}  // namespace bench
