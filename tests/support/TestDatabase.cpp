#include "support/TestDatabase.h"

#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QCoreApplication>
#include <QFile>
#include <QScopeGuard>

#include <map>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace support {

namespace {

// A database of that content, one for the whole program: a copy costs less than preparing another.
QString PreparedFile(database::Content content) {
  static const QTemporaryDir folder;
  const QString file = folder.filePath(QString::number(static_cast<int>(content)));
  if (!QFile::exists(file)) {
    database::PrepareDatabase(database::ConnectionStringForFile(file), content);
  }
  return file;
}

// A new line to a server costs more than most tests. Closed it holds nothing.
adodb::Connection& KeptLine(const QString& connectionString) {
  static std::map<QString, std::unique_ptr<adodb::Connection>> lines;
  if (lines.empty()) {
    qAddPostRoutine([] { lines.clear(); });
  }
  std::unique_ptr<adodb::Connection>& line = lines[connectionString];
  if (line == nullptr) {
    line = database::CreateConnection(connectionString);
  }
  return *line;
}

}  // namespace

QStringList Rows(adodb::Connection& connection, const QString& statement) {
  QStringList lines;
  const auto rows = connection.Execute(statement);
  while (rows->State() == adodb::StateOpen && !rows->AtEnd()) {
    QStringList values;
    for (int i = 0; i < rows->FieldCount(); ++i) {
      const QVariant value = rows->Field(i);
      values.append(automation::IsNull(value) ? u"NULL"_s : automation::CStr(value));
    }
    lines.append(values.join(u'|'));
    rows->MoveNext();
  }
  return lines;
}

QString Outcome(adodb::Connection& connection, const QString& statement) {
  try {
    return Rows(connection, statement).join(u'/');
  } catch (const automation::Error& error) {
    return u"error %1"_s.arg(error.Number());
  }
}

TestDatabase::TestDatabase(database::Content content) : m_file(m_folder.filePath(u"kel.db"_s)) {
  if (IsOnServer()) {
    m_server.emplace(content);
  } else if (!QFile::copy(PreparedFile(content), m_file)) {
    throw std::runtime_error("no test database");
  }
  m_connectionString = m_server ? m_server->ConnectionString() : database::ConnectionStringForFile(m_file);
}

TestDatabase::TestDatabase(const QString& connectionString) : m_connectionString(connectionString) {}

adodb::Connection& TestDatabase::Connection() const {
  if (m_connection == nullptr) {
    m_connection = Connect();
  }
  return *m_connection;
}

QString TestDatabase::Path(const QString& name) const {
  return name.isEmpty() ? m_file : m_folder.filePath(name);
}

std::unique_ptr<adodb::Connection> TestDatabase::Connect() const {
  auto connection = database::CreateConnection(ConnectionString());
  connection->Open();
  return connection;
}

QStringList TestDatabase::QueryBeside(const QString& statement) const {
  if (m_server) {
    adodb::Connection& line = KeptLine(ConnectionString());
    line.Open();
    const auto close = qScopeGuard([&] { line.Close(); });
    return Rows(line, statement);
  }
  return Rows(*Connect(), statement);
}

int TestDatabase::FirstNumber(const QString& statement) const {
  const QStringList rows = QueryBeside(statement);
  if (rows.isEmpty()) {
    throw std::runtime_error("no row: " + statement.toStdString());
  }
  return automation::CLng(rows.front().section(u'|', 0, 0));
}

}  // namespace support
