#include "support/RecordingConnection.h"

#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace support {

QStringList RecordingConnection::Writes() const {
  QStringList writes;
  for (const QString& entry : m_log) {
    if (entry.startsWith(u"INSERT") || entry.startsWith(u"UPDATE") || entry.startsWith(u"DELETE")) {
      writes.append(entry);
    }
  }
  return writes;
}

void RecordingConnection::FailAt(const QString& beginning) {
  m_hook = [beginning](const QString& entry) {
    if (!beginning.isEmpty() && entry.startsWith(beginning)) {
      throw automation::Error(-2147467259, u"sin conexión"_s);
    }
  };
}

void RecordingConnection::Note(const QString& entry) {
  if (m_hook) {
    m_hook(entry);
  }
  m_log.append(entry);
}

void RecordingConnection::Open() {
  Note(u"OPEN"_s);
  m_real.Open();
}

void RecordingConnection::Open(const QString& connectionString, const QString& user, const QString& password,
                               int options) {
  Note(u"OPEN('%1','%2','%3',%4)"_s.arg(connectionString, user, password).arg(options));
  m_real.Open(connectionString, user, password, options);
}

void RecordingConnection::Close() {
  Note(u"CLOSE"_s);
  m_real.Close();
}

std::unique_ptr<adodb::Recordset> RecordingConnection::Execute(const QString& statement) {
  Note(statement);
  return m_real.Execute(statement);
}

void RecordingConnection::BeginTrans() {
  Note(u"BEGIN"_s);
  m_real.BeginTrans();
}

void RecordingConnection::CommitTrans() {
  Note(u"COMMIT"_s);
  m_real.CommitTrans();
}

void RecordingConnection::RollbackTrans() {
  Note(u"ROLLBACK"_s);
  m_real.RollbackTrans();
}

}  // namespace support
