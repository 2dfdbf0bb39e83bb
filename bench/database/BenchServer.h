#pragma once

#include "platform/adodb/Connection.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <libpq-fe.h>

#include <memory>

namespace bench {

struct PlainDeleter {
  void operator()(PGconn* line) const { PQfinish(line); }
  void operator()(PGresult* result) const { PQclear(result); }
};
using PlainLine = std::unique_ptr<PGconn, PlainDeleter>;
using PlainResult = std::unique_ptr<PGresult, PlainDeleter>;

/// A server of the bench's own with a prepared database, gone with this object. What can't be ends the program.
class BenchServer {
 public:
  enum class Disk { WaitedFor, NotWaitedFor };

  explicit BenchServer(Disk disk);
  BenchServer(const BenchServer&) = delete;
  BenchServer& operator=(const BenchServer&) = delete;
  ~BenchServer();

  /// Of the server's socket.
  const QString& Folder() const { return m_folder; }
  std::unique_ptr<adodb::Connection> Connect() const;
  /// The same without this project's library.
  PlainLine PlainConnect() const;

 private:
  QTemporaryDir m_own;
  QString m_folder;
};

/// Runs a statement without parameters; its refusal ends the program.
PlainResult Run(const PlainLine& line, const QByteArray& sql);
/// Ends the program unless the result is one of success.
void Require(const PlainLine& line, const PGresult* result);

}  // namespace bench
