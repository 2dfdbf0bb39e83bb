#pragma once

#include "database/Database.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A prepared database file of one test and a connection to it.
class TestDatabase {
 public:
  explicit TestDatabase(database::Content content = database::Content::Reference)
      : m_path(m_folder.filePath(QStringLiteral("kel.db"))) {
    database::PrepareDatabase(Text(), content);
    m_connection = Connect();
  }

  QString Path() const { return m_path; }
  /// The connection string; nobody is waited for longer than a moment.
  QString Text() const { return database::ConnectionStringForFile(m_path) + QStringLiteral(";Espera=50"); }
  adodb::Connection& Connection() { return *m_connection; }
  std::unique_ptr<adodb::Connection> Connect() const {
    auto connection = database::CreateConnection(Text());
    connection->Open();
    return connection;
  }

 private:
  QTemporaryDir m_folder;
  QString m_path;
  std::unique_ptr<adodb::Connection> m_connection;
};

/// A value as a test writes it: Null is "null", a Boolean "si" or "no", a decimal with its point.
inline QString Shown(const QVariant& value) {
  if (automation::IsNull(value)) {
    return QStringLiteral("null");
  }
  if (value.typeId() == QMetaType::Bool) {
    return value.toBool() ? QStringLiteral("si") : QStringLiteral("no");
  }
  return value.typeId() == QMetaType::Double ? QString::number(value.toDouble(), 'g', 15) : value.toString();
}

/// The rows of a statement: fields separated by '|', rows by '/'. "error N" when it fails with that number.
inline QString Rows(adodb::Connection& connection, const QString& statement) {
  try {
    const auto recordset = connection.Execute(statement);
    QStringList rows;
    while (recordset->State() == adodb::StateOpen && !recordset->AtEnd()) {
      QStringList fields;
      for (int i = 0; i < recordset->FieldCount(); ++i) {
        fields += Shown(recordset->Field(i));
      }
      rows += fields.join(u'|');
      recordset->MoveNext();
    }
    return rows.join(u'/');
  } catch (const automation::Error& error) {
    return QStringLiteral("error %1").arg(error.Number());
  }
}

/// The number of the error that `action` raises, 0 for none.
template <typename Action>
int ErrorOf(Action action) {
  try {
    action();
    return 0;
  } catch (const automation::Error& error) {
    return error.Number();
  }
}
