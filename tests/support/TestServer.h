#pragma once

#include "database/Database.h"

#include <QString>

namespace support {

/// Whether this run's databases are on a server: KEL_MOTOR=postgres. The server is the one that
/// tests/support/postgres.sh has started; KEL_POSTGRES names the file that says where. Throws std::runtime_error
/// without one.
bool IsOnServer();

/// A database with that content and nothing else, this object's own. The program makes one anew only where none is
/// free: making and dropping costs far more than undoing what a test did.
class ServerDatabase {
 public:
  explicit ServerDatabase(database::Content content);
  ServerDatabase(const ServerDatabase&) = delete;
  ServerDatabase& operator=(const ServerDatabase&) = delete;
  ~ServerDatabase();

  QString ConnectionString() const;
  /// Runs statements of the server's own, as its owner. The database serves no other test then.
  void Run(const QString& sql) const;

 private:
  database::Content m_content;
  QString m_name;
  mutable bool m_isSpoiled = false;
};

}  // namespace support
