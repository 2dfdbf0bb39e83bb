#include "database/Schema.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QCollator>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

// A library with a connection of another make: Qt's own SQL module on a database in memory, with what the statements'
// dialect needs beside. The environment variable KEL_SIN leaves one of these things out.

namespace {

bool Has(const char* thing) {
  return qgetenv("KEL_SIN") != thing;
}

QVariant Told(const QVariant& value) {
  if (value.typeId() != QMetaType::QString) {
    return value;
  }
  const QString text = value.toString();
  return !Has("long") ? text.left(65535) : !Has("breaks") ? text.simplified() : !Has("blanks") ? text.trimmed() : text;
}

class SqlRecordset : public adodb::Recordset {
 public:
  explicit SqlRecordset(QSqlQuery query) : m_isOpen(query.isSelect()), m_columns(query.record()) {
    while (m_isOpen && query.next()) {
      QVariantList row;
      for (int i = 0; i < m_columns.count(); ++i) {
        row.append(query.isNull(i) && Has("nulls") ? automation::Null() : Told(query.value(i)));
      }
      m_rows.append(row);
    }
  }

  int State() const override { return m_isOpen ? adodb::StateOpen : adodb::StateClosed; }
  bool AtEnd() const override { return m_row >= m_rows.size(); }
  void MoveNext() override { ++m_row; }
  QVariant Field(QStringView name) override { return Field(m_columns.indexOf(name.toString())); }
  QVariant Field(int position) override {
    if (position < 0 || position >= m_columns.count()) {
      throw automation::Error(adodb::NoSuchField, u"no hay esa columna"_s);
    }
    if (AtEnd()) {
      throw automation::Error(adodb::NoCurrentRow, u"no hay fila"_s);
    }
    return m_rows[m_row][position];
  }
  int FieldCount() const override { return m_columns.count(); }
  QString FieldName(int position) const override { return m_columns.fieldName(position); }
  void Close() override { m_isOpen = false; }

 private:
  bool m_isOpen;
  QSqlRecord m_columns;
  QList<QVariantList> m_rows;
  qsizetype m_row = 0;
};

// What SQLite calls for texts in capitals, and for the order of texts.
void UpperCase(sqlite3_context* context, int, sqlite3_value** values) {
  const QString text = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(values[0]))).toUpper();
  sqlite3_result_text(context, text.toUtf8().constData(), -1, SQLITE_TRANSIENT);
}

int SpanishOrder(void*, int firstSize, const void* first, int secondSize, const void* second) {
  static const QCollator collator = [] {
    QCollator spanish(QLocale(QLocale::Spanish, QLocale::Spain));
    spanish.setCaseSensitivity(Qt::CaseInsensitive);
    return spanish;
  }();
  return collator.compare(QString::fromUtf8(static_cast<const char*>(first), firstSize),
                          QString::fromUtf8(static_cast<const char*>(second), secondSize));
}

class SqlConnection : public adodb::Connection {
 public:
  SqlConnection() : m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s)) {
    m_database.setDatabaseName(u":memory:"_s);
    m_database.open();
    auto* engine = *static_cast<sqlite3**>(m_database.driver()->handle().data());
    if (Has("ucase")) {
      sqlite3_create_function(engine, "ucase", 1, SQLITE_UTF8, nullptr, UpperCase, nullptr, nullptr);
    }
    sqlite3_create_collation(engine, "es", SQLITE_UTF8, nullptr, SpanishOrder);
    for (const database::Table& table : database::Schema::Current().Tables()) {
      CreateTable(table);
    }
  }

  int State() const override { return m_isOpen ? adodb::StateOpen : adodb::StateClosed; }
  void Open() override {
    if (m_isOpen) {
      throw automation::Error(adodb::ObjectOpen, u"ya está abierta"_s);
    }
    m_isOpen = true;
  }
  void Open(const QString&, const QString&, const QString&, int options) override {
    if (options == -1 && !Has("stored")) {
      throw automation::Error(automation::InvalidProcedureCall, u"falta la cadena de conexión"_s);
    }
    Open();
  }
  void Close() override {
    if (m_isInTransaction && Has("undoing")) {
      RollbackTrans();
    }
    m_isOpen = false;
  }
  std::unique_ptr<adodb::Recordset> Execute(const QString& statement) override {
    if (!m_isOpen) {
      throw automation::Error(adodb::ObjectClosed, u"está cerrada"_s);
    }
    QSqlQuery query = Run(Translated(statement));
    return query.isSelect() || Has("closed") ? std::make_unique<SqlRecordset>(std::move(query)) : nullptr;
  }
  qint64 RecordsAffected() const override { return 0; }
  void BeginTrans() override {
    if (std::exchange(m_isInTransaction, true) && Has("transactions")) {
      throw automation::Error(adodb::TransactionActive, u"ya hay una transacción"_s);
    }
    Run(u"BEGIN"_s);
  }
  void CommitTrans() override { End(u"COMMIT"_s); }
  void RollbackTrans() override { End(u"ROLLBACK"_s); }

 private:
  QSqlQuery Run(const QString& statement) {
    QSqlQuery query(m_database);
    if (!query.exec(statement)) {
      const bool isNoNumber = query.lastError().databaseText() == u"13";
      throw automation::Error(isNoNumber ? int(automation::TypeMismatch) : int(adodb::EngineFailure),
                              query.lastError().text());
    }
    return query;
  }

  void End(const QString& statement) {
    if (!std::exchange(m_isInTransaction, false)) {
      throw automation::Error(adodb::NoTransaction, u"no hay transacción"_s);
    }
    Run(statement);
  }

  static QString Translated(QString statement) {
    static const QRegularExpression keyword(u"(\\d)(WHERE|GROUP)\\b"_s);
    static const QRegularExpression factor(u"\\* '(\\d+),(\\d+)'"_s);
    return statement.replace(keyword, u"\\1 \\2"_s).replace(factor, u"* \\1.\\2"_s);
  }

  void CreateTable(const database::Table& table) {
    QStringList columns;
    for (const database::Column& column : table.columns) {
      const bool isText = !database::IsNumericType(column.type);
      const QString type = column.type == database::ColumnType::Key
                               ? u"INTEGER PRIMARY KEY"_s + (Has("new keys") ? u" AUTOINCREMENT"_s : QString())
                           : isText ? u"TEXT COLLATE es"_s
                                    : u"REAL"_s;
      columns.append(column.name + u' ' + type + (column.required && !isText ? u" DEFAULT 0"_s : QString()));
    }
    Run(u"CREATE TABLE %1 (%2)"_s.arg(table.name, columns.join(u", "_s)));
    for (const database::Column& column : table.columns) {
      const bool isDecimal = column.type == database::ColumnType::Decimal || column.type == database::ColumnType::Money;
      for (const QString& event : isDecimal&& Has("decimals") ? QStringList{u"INSERT"_s, u"UPDATE"_s} : QStringList()) {
        Run(u"CREATE TRIGGER %1_%2_%3 AFTER %3 ON %1 WHEN typeof(NEW.%2)='text' BEGIN "
            "SELECT RAISE(ABORT, '13') WHERE NEW.%2 GLOB '*[^0-9.,]*'; "
            "UPDATE %1 SET %2=CAST(replace(CASE WHEN instr(NEW.%2,',') THEN replace(NEW.%2,'.','') ELSE NEW.%2 END,',','.') AS REAL) WHERE rowid=NEW.rowid; END"_s
                .arg(table.name, column.name, event));
      }
    }
  }

  QSqlDatabase m_database;
  bool m_isOpen = false;
  bool m_isInTransaction = false;
};

class Services : public QObject {
  Q_OBJECT
  Q_PROPERTY(adodb::Connection* congestion READ Connection CONSTANT)

 public:
  adodb::Connection* Connection() const {
    static SqlConnection connection;
    return &connection;
  }
};

struct Factory : automation::ClassFactory {
  std::unique_ptr<QObject> CreateInstance() override { return std::make_unique<Services>(); }
};

}  // namespace

extern "C" {

Q_DECL_EXPORT int DllGetClassObject(const char* progId, automation::ClassFactory** factory) {
  static Factory services;
  *factory = qstricmp(progId, "KelAPI.cPrincipal") == 0 ? &services : nullptr;
  return *factory != nullptr ? automation::LibraryOk : automation::LibraryClassNotAvailable;
}

Q_DECL_EXPORT int DllCanUnloadNow() {
  return automation::LibraryFalse;
}

}  // extern "C"

#include "SqlServices.moc"
