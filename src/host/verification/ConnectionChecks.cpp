#include "host/verification/ConnectionChecks.h"

#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

static void InitialiseResource() {
  Q_INIT_RESOURCE(verification);
}

namespace host {
namespace {

/// A statement and the lines below it.
struct Entry {
  QString statement;
  QStringList expected;
};

QList<Entry> Entries() {
  InitialiseResource();
  QFile file(u":/verification/statements.txt"_s);
  if (!file.open(QIODevice::ReadOnly)) {
    throw automation::Error(automation::FileNotFound);
  }
  QList<Entry> entries;
  for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
    if (line.startsWith(u"  "_s)) {
      entries.last().expected.append(line.mid(2));
    } else if (!line.isEmpty() && !line.startsWith(u'#')) {
      entries.append({line, {}});
    }
  }
  return entries;
}

QString Shortened(const QString& text) {
  constexpr qsizetype longest = 98;
  return text.size() > longest ? text.left(longest - 1) + u'…' : text;
}

// What a line of the file can't hold: breaks, and what is long.
QString Filled(QString text) {
  constexpr int longText = 200000;
  return text.replace(u'↵', u"\r\n"_s).replace(u"{largo}"_s, QString(longText, u'ñ'));
}

QString Said(const QVariant& value) {
  if (automation::IsNull(value)) {
    return u"Null"_s;
  }
  return u"%1 (%2)"_s.arg(Shortened(automation::Text(value)), QString::fromLatin1(value.typeName()));
}

/// The statements' run: the connection, and the keys of new records by their names.
class StatementRun {
 public:
  explicit StatementRun(adodb::Connection& connection) : m_connection(connection) {}

  void Check(const Entry& entry) {
    const QString expected = entry.expected.value(0);
    if (expected.startsWith(u"error"_s)) {
      CheckError(entry.statement, expected.section(u' ', 1));
      return;
    }
    const std::unique_ptr<adodb::Recordset> rows = Run(entry.statement);
    Require(rows != nullptr || Acts().contains(entry.statement),
            u"no devuelve un Recordset; el de una sentencia sin filas está cerrado"_s);
    if (!entry.expected.isEmpty()) {
      Require(rows->State() == adodb::StateOpen, u"no contesta filas"_s);
      // A dialog reads one recordset while another is open.
      const std::unique_ptr<adodb::Recordset> beside = Run(entry.statement);
      CheckRows(*rows, entry.expected);
    }
  }

 private:
  using Act = std::function<void(adodb::Connection&)>;
  static const QMap<QString, Act>& Acts() {
    static const QMap<QString, Act> acts{
        {u"OPEN"_s, [](adodb::Connection& connection) { connection.Open(); }},
        {u"OPEN STORED"_s, [](adodb::Connection& connection) { connection.Open({}, {}, {}, -1); }},
        {u"CLOSE"_s, [](adodb::Connection& connection) { connection.Close(); }},
        {u"BEGIN"_s, [](adodb::Connection& connection) { connection.BeginTrans(); }},
        {u"COMMIT"_s, [](adodb::Connection& connection) { connection.CommitTrans(); }},
        {u"ROLLBACK"_s, [](adodb::Connection& connection) { connection.RollbackTrans(); }}};
    return acts;
  }

  std::unique_ptr<adodb::Recordset> Run(const QString& statement) {
    if (const Act act = Acts().value(statement)) {
      act(m_connection);
      return nullptr;
    }
    QString text = Filled(statement);
    for (auto key = m_keys.begin(); key != m_keys.end(); ++key) {
      text.replace(u'{' + key.key() + u'}', QString::number(*key));
    }
    return m_connection.Execute(text);
  }

  // `number` is empty for any error.
  template <typename Act>
  static void RequireError(const QString& what, const QString& number, Act act) {
    int raised = 0;
    try {
      act();
    } catch (const automation::Error& error) {
      raised = error.Number();
    }
    Require(raised != 0, what + u": no falla con una automation::Error"_s);
    Require(number.isEmpty() || number.toInt() == raised,
            what + u": falla con el error %1 y no con el %2"_s.arg(raised).arg(number));
  }

  void CheckError(const QString& statement, const QString& number) {
    RequireError(u"esto"_s, number, [&] { Run(statement); });
  }

  void CheckRows(adodb::Recordset& rows, const QStringList& expected) {
    for (const QString& line : expected) {
      if (line == u"none") {
        RequireError(u"un valor donde no hay filas"_s, u"3021"_s, [&] { rows.Field(0); });
      } else if (line.startsWith(u"without "_s)) {
        continue;
      } else {
        Require(!rows.AtEnd(), u"faltan filas"_s);
        CheckRow(rows, line.mid(2), expected);
        rows.MoveNext();
      }
    }
    Require(rows.AtEnd(), u"da filas de más"_s);
    rows.Close();
  }

  void CheckRow(adodb::Recordset& rows, const QString& fields, const QStringList& expected) {
    for (const QString& field : fields.split(u" | "_s)) {
      const QString column = field.section(u'=', 0, 0);
      CheckValue(column, rows.Field(column), field.section(u'=', 1));
    }
    for (const QString& line : expected.filter(QRegularExpression(u"^without "_s))) {
      RequireError(u"una columna que no hay"_s, u"3265"_s, [&] { rows.Field(line.section(u' ', 1)); });
    }
  }

  void CheckValue(const QString& column, const QVariant& value, const QString& expected) {
    const bool isText = value.typeId() == QMetaType::QString;
    const bool isNumber = !isText && automation::IsNumeric(value);
    bool holds = false;
    if (expected == u"Null") {
      holds = automation::IsNull(value);
    } else if (expected == u"True" || expected == u"False") {
      holds = isNumber && automation::CBool(value) == (expected == u"True");
    } else if (expected.startsWith(u'\'')) {
      holds = isText && value.toString() == Filled(expected.sliced(1).chopped(1).replace(u"''"_s, u"'"_s));
    } else if (expected.startsWith(u"{>"_s)) {
      holds = isNumber && automation::CLng(value) > m_keys.value(expected.sliced(2).chopped(1));
    } else if (expected.startsWith(u'{')) {
      holds = isNumber && IsKey(expected.sliced(1).chopped(1), automation::CLng(value));
    } else {
      holds = isNumber && automation::CDbl(value) == automation::CDbl(expected);
    }
    Require(holds, u"en %1 da %2 y no %3"_s.arg(column, Said(value), Shortened(expected)));
  }

  // The first mention of a key gives it its name.
  bool IsKey(const QString& name, int key) {
    if (!m_keys.contains(name)) {
      m_keys[name] = key;
    }
    return key > 0 && m_keys[name] == key;
  }

  adodb::Connection& m_connection;
  QMap<QString, int> m_keys;
};

void RequireEmptyTables(adodb::Connection& connection, const QList<Entry>& entries) {
  for (const Entry& entry : entries) {
    static const QRegularExpression insertion(u"^INSERT INTO (\\w+)"_s);
    const QString table = insertion.match(entry.statement).captured(1);
    if (!table.isEmpty() && !connection.Execute(u"SELECT * FROM "_s + table)->AtEnd()) {
      throw automation::Error(
          automation::InvalidProcedureCall,
          u"La tabla %1 no está vacía. Esta prueba escribe en la base de datos: use una vacía, solo "
          "para ella."_s.arg(table));
    }
  }
}

}  // namespace

std::vector<MemberCheck> ConnectionChecks(adodb::Connection& connection) {
  const QList<Entry> entries = Entries();
  RequireEmptyTables(connection, entries);
  const auto run = std::make_shared<StatementRun>(connection);
  std::vector<MemberCheck> checks;
  for (const Entry& entry : entries) {
    checks.push_back({Shortened(entry.statement), [run, entry] { run->Check(entry); }});
  }
  return checks;
}

}  // namespace host
