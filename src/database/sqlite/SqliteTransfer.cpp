#include "database/sqlite/SqliteTransfer.h"

#include "database/sqlite/SqliteTarget.h"
#include "platform/adodb/Statement.h"

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace database {

namespace {

QString Literal(const CarriedValue& value) {
  switch (value.kind) {
    case CarriedValue::Kind::Text:
      return adodb::StatementText(u"'{}'", value.text);
    case CarriedValue::Kind::Number:
      return QString::fromLatin1(value.digits);
    default:
      return u"NULL"_s;
  }
}

// Through the statements' layer, which knows how the file holds each type.
class Inserts : public RowTaker {
 public:
  Inserts(adodb::Connection& connection, const Table& table) : m_connection(connection), m_table(table) {}

  void Add(const CarriedRow& row) override {
    QStringList values;
    for (const CarriedValue& value : row) {
      values += Literal(value);
    }
    adodb::Execute(m_connection, u"INSERT INTO [{}] VALUES ({})", Verbatim{m_table.name}, Verbatim{values.join(u',')});
  }

 private:
  adodb::Connection& m_connection;
  const Table& m_table;
};

QByteArray Quoted(const Table& table) {
  return '\'' + table.name.toUtf8() + '\'';
}

}  // namespace

qint64 SqliteTransfer::LastKey(const Table& table) const {
  const QByteArray key = QuotedName(table.columns.front().name).toUtf8();
  return m_connection.Handle()
      .Value("SELECT max(coalesce((SELECT seq FROM sqlite_sequence WHERE name=" + Quoted(table) +
             "), 0), coalesce((SELECT max(" + key + ") FROM " + QuotedName(table.name).toUtf8() + "), 0))")
      .toLongLong();
}

std::unique_ptr<RowTaker> SqliteTransfer::Taker(const Table& table) const {
  return std::make_unique<Inserts>(m_connection, table);
}

// The engine makes its own note of a table with the first row, and takes a note of somebody else's as well.
void SqliteTransfer::CountOnFrom(const Table& table, qint64 key) const {
  m_connection.Handle().Run("DELETE FROM sqlite_sequence WHERE name=" + Quoted(table));
  if (key > 0) {
    m_connection.Handle().Run("INSERT INTO sqlite_sequence VALUES (" + Quoted(table) + ", " + QByteArray::number(key) +
                              ')');
  }
}

}  // namespace database
