#pragma once

#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "framework/Desktop.h"
#include "framework/HostServices.h"
#include "host/records/Session.h"
#include "host/services/cPrincipal.h"
#include "platform/adodb/Connection.h"

#include <QTemporaryDir>

#include <functional>

namespace bench {

/// Questions answer themselves with yes.
class Agreeing : public framework::Desktop {
 public:
  Agreeing() { Install(this); }
  Agreeing(const Agreeing&) = delete;
  Agreeing& operator=(const Agreeing&) = delete;
  ~Agreeing() override { Install(nullptr); }
  int MsgBox(const QString& text, int style, const QString& title) override;
  void Beep() override {}
};

/// A host around a fresh database, for dialogs that are measured, and the same database through the
/// engine's C interface. Neither waits for the disk.
class Office {
 public:
  explicit Office(database::Content content = database::Content::Reference);

  adodb::Connection& Connection() const { return *m_connection; }
  /// The next dialogs modify this record.
  void Select(int id) const;
  /// The next dialogs add one, which belongs to the record `parent` where one is given.
  void Add(int parent = 0) const;

  const database::SqliteHandle& Native() const { return *m_native; }
  /// Reads every value of every row as what it is, a number or a text; there must be some.
  void ReadNative(const QByteArray& query) const;
  /// The statements that the engine runs for the connection during `work`, with their values, as the engine has them.
  QList<QByteArray> StatementsOf(const std::function<void()>& work) const;
  /// Runs them through the C interface as ReadNative does; some may find nothing.
  void RunNative(const QList<QByteArray>& statements) const;

 private:
  qint64 ReadAll(const QByteArray& query) const;

  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(QStringLiteral("kel.db")));
  std::unique_ptr<adodb::Connection> m_connection;
  std::unique_ptr<database::SqliteHandle> m_native;
  host::Session m_session;
  std::unique_ptr<host::cPrincipal> m_services;
  Agreeing m_desktop;
};

}  // namespace bench
