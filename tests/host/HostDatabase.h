#pragma once

#include "database/Database.h"
#include "platform/adodb/Connection.h"

#include <QTemporaryDir>

#include <memory>

/// A prepared database file of its own, with an open connection.
class HostDatabase {
 public:
  HostDatabase() {
    database::PrepareDatabase(ConnectionString(), database::Content::Reference);
    m_connection = NewConnection();
  }

  QString Path() const { return m_folder.filePath(QStringLiteral("kel.db")); }
  QString ConnectionString() const { return database::ConnectionStringForFile(Path()); }
  adodb::Connection* Connection() const { return m_connection.get(); }

  std::unique_ptr<adodb::Connection> NewConnection() const {
    auto connection = database::CreateConnection(ConnectionString());
    connection->Open();
    return connection;
  }

  void Run(const char* statement) const { m_connection->Execute(QString::fromUtf8(statement)); }

  /// The first value of the first row.
  QVariant Value(const char* statement) const { return m_connection->Execute(QString::fromUtf8(statement))->Field(0); }

 private:
  QTemporaryDir m_folder;
  std::unique_ptr<adodb::Connection> m_connection;
};
