#include "support/Office.h"

#include "database/sqlite/SqliteConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/contract/cConstAccion.h"

#include <sqlite3.h>

using namespace framework;
using namespace Qt::StringLiterals;

namespace bench {

int Agreeing::MsgBox(const QString& text, int style, const QString& /*title*/) {
  if ((style & vbYesNo) == 0) {
    qFatal("%s", qPrintable(text));
  }
  return vbYes;
}

Office::Office(database::Content content) {
  database::PrepareDatabase(m_text, content);
  m_connection = database::CreateConnection(m_text);
  m_connection->Open();
  m_native = std::make_unique<database::SqliteHandle>(database::ConnectionString(m_text),
                                                      database::SqliteHandle::Missing::Refuse);
  // The disk's syncs would be measured instead of the work, on either side.
  const QByteArray withoutSyncs = "PRAGMA synchronous=OFF";
  static_cast<database::SqliteConnection&>(*m_connection).Handle().Run(withoutSyncs);
  m_native->Run(withoutSyncs);
  m_session.connection = m_connection.get();
  m_session.settingsFile = m_folder.filePath(u"ajustes.ini"_s);
  m_session.showRefusedLocks = false;
  host::RegisterClasses(m_session);
  m_services = std::make_unique<host::cPrincipal>(m_session);
  m_services->setProperty("Accion", cConstAccion().Modificar());
  objApi() = HostServices(m_services.get());
}

void Office::Select(int id) const {
  m_services->setProperty("Accion", cConstAccion().Modificar());
  m_services->setProperty("IDSeleccionado", id);
}

void Office::Add(int parent) const {
  m_services->setProperty("Accion", cConstAccion().Agregar());
  m_services->setProperty("IDAux", parent);
}

void Office::ReadNative(const QByteArray& query) const {
  if (ReadAll(query) == 0) {
    qFatal("nothing was read");
  }
}

qint64 Office::ReadAll(const QByteArray& query) const {
  const database::SqliteStatement statement = m_native->Prepare(query);
  qint64 read = 0;
  while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
      if (sqlite3_column_type(statement.get(), column) == SQLITE_INTEGER) {
        read += sqlite3_column_int64(statement.get(), column);
        continue;
      }
      const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column));
      read += QString::fromUtf8(bytes, sqlite3_column_bytes(statement.get(), column)).size();
    }
  }
  return read;
}

QList<QByteArray> Office::StatementsOf(const std::function<void()>& work) const {
  sqlite3* engine = static_cast<database::SqliteConnection&>(*m_connection).Handle().Engine();
  QList<QByteArray> statements;
  const auto remember = [](unsigned /*event*/, void* list, void* statement, void* /*text*/) {
    const std::unique_ptr<char, decltype(&sqlite3_free)> text(
        sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement)), sqlite3_free);
    static_cast<QList<QByteArray>*>(list)->append(text.get());
    return 0;
  };
  sqlite3_trace_v2(engine, SQLITE_TRACE_STMT, remember, &statements);
  work();
  sqlite3_trace_v2(engine, 0, nullptr, nullptr);
  return statements;
}

void Office::RunNative(const QList<QByteArray>& statements) const {
  for (const QByteArray& statement : statements) {
    ReadAll(statement);
  }
}

}  // namespace bench
