#include "moving/Import.h"

#include "database/WriteHold.h"
#include "moving/Plan.h"
#include "moving/ReadFile.h"
#include "moving/Survey.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

#include <QCryptographicHash>
#include <QFile>

#include <optional>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace moving {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

QString DigestOf(const QString& path) {
  QFile file(path);
  QCryptographicHash hash(QCryptographicHash::Sha256);
  if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) {
    Refuse(u"No se puede leer el archivo «%1». Compruebe sus permisos."_s.arg(path));
  }
  return QString::fromLatin1(hash.result().toHex());
}

void CheckStop(const database::Stop& stop) {
  if (stop && stop()) {
    throw automation::Error(adodb::Stopped, u"Se ha cancelado. No se ha traído nada."_s);
  }
}

// The second reading: each row becomes its INSERT, which a trial does not send.
class Writer : public SourceListener {
 public:
  Writer(Survey& survey, Plan& plan, adodb::Connection& connection, const ImportWishes& wishes)
      : m_survey(survey), m_plan(plan), m_connection(connection), m_wishes(wishes) {}

  void BeginTable(const SourceTable& /*table*/) override {
    if (m_next >= m_survey.tables.size()) {
      RefuseChanged();
    }
    m_table = &m_survey.tables[m_next++];
    m_row = 0;
  }

  void Row(const SourceRow& row) override {
    CheckStop(m_wishes.stop);
    if (!m_table->match) {
      return;
    }
    if (m_row >= m_table->rows.Count()) {
      RefuseChanged();
    }
    const Fate& fate = m_plan.FateOf(*m_table, m_row);
    if (fate.kind == Fate::Kind::New) {
      Send(InsertOf(fate, Convert(*m_table->match, row).values));
    } else if (fate.kind == Fate::Kind::Revived) {
      Send(adodb::StatementText(u"UPDATE [{}] SET Eliminado=0 WHERE [{}]={}", Verbatim{Here().name},
                                Verbatim{Here().columns.front().name}, fate.key));
    }
    ++m_row;
  }

  void EndTable(qint64 /*missing*/) override {
    if (m_table->match && m_row != m_table->rows.Count()) {
      RefuseChanged();
    }
  }
  void Linked(const QString& /*name*/) override {}
  void Unreadable(const QString& /*name*/) override {}

 private:
  [[noreturn]] static void RefuseChanged() {
    Refuse(u"El archivo ha cambiado mientras se leía. Ciérrelo en el programa que lo usa y repita."_s);
  }

  const database::Table& Here() const { return m_table->shape->Here(); }

  QString InsertOf(const Fate& fate, QList<Value> values) {
    const TableShape& shape = *m_table->shape;
    const TableRule& rule = shape.Rule();
    values.front() = {Value::Kind::Number, QString::number(fate.key)};
    for (const Reference& reference : shape.References()) {
      const qint64 there = values[reference.position].ToId();
      const qint64 here = m_plan.KeyHere(*reference.target, there);
      if (there != 0 && here == 0 && shape.PositionOf(rule.freeKey) == reference.position) {
        values[shape.PositionOf(rule.freeText)].text.prepend(u'*');
      }
      values[reference.position] = {Value::Kind::Number, QString::number(here)};
    }
    if (fate.isDemoted) {
      values[shape.PositionOf(u"Eliminado"_s)] = {Value::Kind::Number, u"-1"_s};
    }
    if (fate.number != 0) {
      values[shape.PositionOf(rule.beside)].text += fate.Suffix();
    }
    QStringList names;
    QStringList literals;
    for (qsizetype i = 0; i < values.size(); ++i) {
      // What the file does not say is the schema's default.
      if (values[i].kind != Value::Kind::None) {
        names.append(u'[' + Here().columns[std::size_t(i)].name + u']');
        literals.append(Literal(values[i]));
      }
    }
    return adodb::StatementText(u"INSERT INTO [{}] ({}) VALUES ({})", Verbatim{Here().name},
                                Verbatim{names.join(u", ")}, Verbatim{literals.join(u", ")});
  }

  void Send(const QString& statement) {
    if (m_wishes.isTrial) {
      return;
    }
    try {
      m_connection.Execute(statement);
    } catch (const automation::Error& error) {
      throw automation::Error(
          error.Number(), u"%1, %2: %3 No se ha traído nada."_s.arg(Here().name, RowName(*m_table, qsizetype(m_row)),
                                                                    error.Description()));
    }
  }

  Survey& m_survey;
  Plan& m_plan;
  adodb::Connection& m_connection;
  const ImportWishes& m_wishes;
  SurveyedTable* m_table = nullptr;
  std::size_t m_next = 0;
  std::size_t m_row = 0;
};

qint64 CountRows(adodb::Connection& connection, const QString& table) {
  return adodb::Execute(connection, u"SELECT COUNT(*) FROM [{}]", Verbatim{table})->Field(0).toLongLong();
}

// Whatever else was wrong on the way, what came in is what the report says.
void CompareCounts(adodb::Connection& connection, const Survey& survey, const QMap<QString, qint64>& before) {
  for (const SurveyedTable& table : survey.tables) {
    const QString& name = table.report.here;
    if (!name.isEmpty() && CountRows(connection, name) != before.value(name) + table.report.created) {
      Refuse(u"En la tabla %1 no han entrado los registros previstos. No se ha traído nada."_s.arg(name));
    }
  }
}

ImportReport ReportOf(const Survey& survey, const QString& path, const QString& digest) {
  ImportReport report;
  report.file = path;
  report.digest = digest;
  report.elsewhere = survey.elsewhere;
  report.unreadable = survey.unreadable;
  for (const SurveyedTable& table : survey.tables) {
    report.tables.append(table.report);
  }
  return report;
}

QStringList MatchedTables(const Survey& survey) {
  QStringList names;
  for (const TableRule& rule : TableRules()) {
    for (const SurveyedTable& table : survey.tables) {
      if (table.match && table.match->rule == &rule) {
        names.append(rule.table->name);
      }
    }
  }
  return names;
}

}  // namespace

ImportReport Import(const QString& path, adodb::Connection& connection, const ImportWishes& wishes) {
  const QString digest = DigestOf(path);
  Survey survey(wishes.names);
  ReadFile(path, survey, wishes.stop);
  const QStringList tables = MatchedTables(survey);
  if (tables.isEmpty()) {
    ImportReport report = ReportOf(survey, path, digest);
    Refuse(u"Ninguna tabla del archivo es de este programa. No se ha traído nada.\n"_s + report.Text());
  }
  std::optional<adodb::Transaction> transaction;
  QMap<QString, qint64> before;
  if (!wishes.isTrial) {
    transaction.emplace(connection);
    database::HoldWrites(connection, tables);
    for (const QString& table : tables) {
      before.insert(table, CountRows(connection, table));
    }
  }
  Plan plan(survey, connection, wishes.identifier);
  ImportReport report = ReportOf(survey, path, digest);
  if (report.Read() == 0 || (report.HasLosses() && !wishes.acceptsLosses && !wishes.isTrial)) {
    return report;
  }
  Writer writer(survey, plan, connection, wishes);
  ReadFile(path, writer, wishes.stop);
  if (DigestOf(path) != digest) {
    Refuse(u"El archivo ha cambiado mientras se leía. Ciérrelo en el programa que lo usa y repita."_s);
  }
  if (transaction) {
    CompareCounts(connection, survey, before);
    CheckStop(wishes.stop);
    transaction->Commit();
    report.isWritten = true;
  }
  return report;
}

}  // namespace moving
