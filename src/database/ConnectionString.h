#pragma once

#include <QHash>
#include <QString>

#include <chrono>
#include <optional>

namespace database {

/// A connection string taken apart (its form stands in database/Database.h).
class ConnectionString {
 public:
  /// Where a database on a server is; what is empty is for the server's library to find (its service file, its
  /// variables, the user's own name).
  struct ServerPlace {
    QString host;  ///< A name, an address, or the folder of a socket.
    QString port;
    QString base;
    QString user;
    QString service;  ///< An entry of the service file, which has all the rest.

    bool operator==(const ServerPlace&) const = default;
  };

  /// Raises InvalidConnectionString for a text that neither begins with `postgresql://...` nor is made of `key=value`
  /// pairs, a repeated key, a key that the library or the engine does not know, a quote that never ends, and for a
  /// password, which would be seen in lists of processes.
  explicit ConnectionString(const QString& text);

  const QString& Engine() const { return m_engine; }
  /// Empty for a database on a server.
  const QString& File() const { return m_file; }
  const ServerPlace& Server() const { return m_server; }
  /// The database as messages name it: the file, or base, server and user.
  QString ShownName() const;
  int WaitMilliseconds() const { return m_wait; }
  bool ReadOnly() const { return m_readOnly; }

  ConnectionString WithWait(std::chrono::milliseconds wait) const;

  bool operator==(const ConnectionString&) const = default;

  /// `value` as it must stand in a connection string.
  static QString Quoted(const QString& value);

 private:
  void Take(const QString& key, const QString& value);
  void TakeAddress(const QString& address);
  QString* ServerPart(const QString& key);
  void CheckParts() const;

  QString m_engine = QStringLiteral("sqlite");
  QString m_file;
  ServerPlace m_server;
  int m_wait = 5000;
  bool m_readOnly = false;
};

}  // namespace database
