#pragma once

#include <QHash>
#include <QString>

#include <chrono>
#include <optional>

namespace database {

/// A connection string taken apart (its form stands in database/Database.h).
class ConnectionString {
 public:
  /// Raises InvalidConnectionString for a text that is not made of `key=value` pairs, a repeated key, a key that
  /// the library does not know, or a quote that never ends.
  explicit ConnectionString(const QString& text);

  const QString& Engine() const { return m_engine; }
  const QString& File() const { return m_file; }
  int WaitMilliseconds() const { return m_wait; }
  bool ReadOnly() const { return m_readOnly; }

  ConnectionString WithWait(std::chrono::milliseconds wait) const;

  bool operator==(const ConnectionString&) const = default;

  /// `value` as it must stand in a connection string.
  static QString Quoted(const QString& value);

 private:
  void Take(const QString& key, const QString& value);

  QString m_engine = QStringLiteral("sqlite");
  QString m_file;
  int m_wait = 5000;
  bool m_readOnly = false;
};

}  // namespace database
