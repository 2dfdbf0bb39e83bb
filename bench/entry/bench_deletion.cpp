// Check and deletion of a record of every node on a database with a million collaborators, donations and
// subscriptions, beside one with a thousand of each; and how the engine serves the checks. Nothing waits for the disk:
// what a commit costs there would hide a slow check.

#include "database/Database.h"
#include "database/dialect/Lexer.h"
#include "database/dialect/StatementWriter.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqliteTarget.h"
#include "entry/Deletion.h"
#include "framework/Desktop.h"
#include "framework/HostServices.h"
#include "host/records/Session.h"
#include "host/services/cPrincipal.h"
#include "support/Race.h"

#include <QApplication>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <map>

using namespace framework;

using adodb::Execute;

namespace {

constexpr int few = 1000;
constexpr int many = 1000000;
constexpr int rounds = 31;
// Deletions in one measurement.
constexpr int batch = 20;

// Refusals answer themselves.
class Silent : public Desktop {
 public:
  Silent() { Install(this); }
  ~Silent() override { Install(nullptr); }
  int MsgBox(const QString& /*text*/, int /*style*/, const QString& /*title*/) override { return vbOK; }
  void Beep() override {}
};

adodb::Verbatim Name(const char16_t* name) {
  return {QString::fromUtf16(name)};
}

class Office {
 public:
  explicit Office(int size) {
    database::PrepareDatabase(m_text, database::Content::Reference);
    m_connection = database::CreateConnection(m_text);
    m_connection->Open();
    m_connection->BeginTrans();
    for (int i = 0; i < size; ++i) {
      const int mark = i % 2 == 0 ? 0 : -1;
      Execute(*m_connection,
              u"INSERT INTO Colaboradores(Nombre,CodDiocesis,CodProvincia,codpais,CodCobrador,Eliminado) "
              u"VALUES('Nombre',{},{},35,{},{})",
              i % 60 + 1, i % 52 + 1, i % 9, mark);
      Execute(*m_connection,
              u"INSERT INTO Donativos(CodColaborador,CodTipoDonativo,CodDeduccion_Comunidad,CodEmisor_Cuenta,Importe,"
              u"Eliminado) VALUES({},{},{},{},10,{})",
              i, i % 12, i % 15, i % 3 + 1, mark);
      Execute(*m_connection,
              u"INSERT INTO Suscripciones(CodColaborador,CodTipoPublicacion,CodEmisor_Cuenta,NumeroEjemplares,Importe,"
              u"Eliminado) VALUES({},{},{},1,10,{})",
              i, i % 5, i % 3 + 1, mark);
    }
    Execute(*m_connection, u"INSERT INTO Emisores(Nombre) VALUES('Uno')");
    for (int i = 0; i < 3; ++i) {
      Execute(*m_connection, u"INSERT INTO Emisores_Cuentas(CodEmisor) VALUES(1)");
    }
    m_connection->CommitTrans();
    m_connection->Close();
    m_connection->Open();
    static_cast<database::SqliteConnection&>(*m_connection).Handle().Run("PRAGMA synchronous=OFF");
    m_session.connection = m_connection.get();
    m_services = std::make_unique<host::cPrincipal>(m_session);
  }

  // Records of the rule's table that nobody refers to, made beforehand.
  QList<int> Spare(const entry::deletion::Rule& rule, int count) const {
    QList<int> ids;
    m_connection->BeginTrans();
    for (int i = 0; i < count; ++i) {
      Execute(*m_connection, u"INSERT INTO {}(Eliminado) VALUES(0)", Name(rule.table));
      ids.append(Execute(*m_connection, u"SELECT MAX({}) AS N FROM {}", Name(rule.key), Name(rule.table))
                     ->Field(u"N")
                     .toInt());
    }
    m_connection->CommitTrans();
    return ids;
  }

  void Delete(int node, int id) const {
    objApi() = HostServices(m_services.get());
    entry::deletion::Delete(node, id);
  }

  void DeleteBatch(int node, QList<int>& ids) const {
    for (int i = 0; i < batch; ++i) {
      Delete(node, ids.takeLast());
    }
  }

  void RefuseBatch(int node, int id) const {
    for (int i = 0; i < batch; ++i) {
      Delete(node, id);
    }
  }

  void PrintPlan(const entry::deletion::Rule& rule) const {
    const database::SqliteHandle handle(database::ConnectionString(m_text), database::SqliteHandle::Missing::Refuse);
    const QString text = rule.references->Text(7);
    database::Lexer lexer;
    lexer.Read(text);
    const database::Plan plan =
        database::Translate(database::SqliteTarget::Instance(), database::Schema::Current(), text, lexer.Tokens());
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(handle.Engine(), ("EXPLAIN QUERY PLAN " + plan.sql).constData(), -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
      std::printf("    %s\n", reinterpret_cast<const char*>(sqlite3_column_text(statement, 3)));
    }
    sqlite3_finalize(statement);
  }

 private:
  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(QStringLiteral("kel.db")));
  std::unique_ptr<adodb::Connection> m_connection;
  host::Session m_session;
  std::unique_ptr<host::cPrincipal> m_services;
};

void RaceOfDeletions(const Office& large, const Office& small, const entry::deletion::Rule& rule) {
  QList<int> inLarge = large.Spare(rule, rounds * batch);
  QList<int> inSmall = small.Spare(rule, rounds * batch);
  std::vector<bench::Contestant> contestants{
      {"with a million", [&] { large.DeleteBatch(rule.node, inLarge); }},
      {"with a thousand", [&] { small.DeleteBatch(rule.node, inSmall); }},
  };
  bench::Race(contestants, rounds);
  bench::Report("20 deletions from " + Name(rule.table).text.toStdString(), contestants, {1.2});
}

// A record that half of all rows refer to: the first reference found must be enough.
void RaceOfRefusals(const Office& large, const Office& small, const entry::deletion::Rule& rule, int id) {
  std::vector<bench::Contestant> contestants{
      {"with a million", [&] { large.RefuseBatch(rule.node, id); }},
      {"with a thousand", [&] { small.RefuseBatch(rule.node, id); }},
  };
  bench::Race(contestants, rounds);
  bench::Report("20 refusals in " + Name(rule.table).text.toStdString(), contestants, {1.2});
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const Silent desktop;
  const Office small(few);
  const Office large(many);
  for (const entry::deletion::Rule& rule : entry::deletion::Rules()) {
    if (rule.references) {
      RaceOfDeletions(large, small, rule);
      large.PrintPlan(rule);
    }
  }
  for (const entry::deletion::Rule& rule : entry::deletion::Rules()) {
    // Records with live references among the million.
    const std::map<int, int> referred{{16, 1}, {17, 2}, {18, 1}, {20, 35}, {22, 27}};
    if (const auto found = referred.find(rule.node); found != referred.end()) {
      RaceOfRefusals(large, small, rule, found->second);
    }
  }
  return 0;
}
