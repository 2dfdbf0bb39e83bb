// Check and deletion of a record of every node on a database with a million collaborators, donations and
// subscriptions, beside one with a thousand of each; and how the engine serves the checks.

#include "database/Database.h"
#include "database/dialect/Lexer.h"
#include "database/dialect/StatementWriter.h"
#include "database/sqlite/SqliteHandle.h"
#include "entry/Eliminacion.h"
#include "framework/Plataforma.h"
#include "framework/ServiciosHost.h"
#include "host/services/Session.h"
#include "host/services/cPrincipal.h"
#include "support/Race.h"

#include <QApplication>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <map>

namespace {

constexpr int few = 1000;
constexpr int many = 1000000;
constexpr int rounds = 31;

// Refusals answer themselves.
class Silent : public Plataforma {
 public:
  Silent() { Install(this); }
  ~Silent() override { Install(nullptr); }
  int MsgBox(const QString& /*text*/, int /*style*/, const QString& /*title*/) override { return vbOK; }
  void Beep() override {}
};

class Office {
 public:
  explicit Office(int size) {
    database::PrepareDatabase(m_text, database::Content::Reference);
    m_connection = database::CreateConnection(m_text);
    m_connection->Open();
    m_connection->BeginTrans();
    for (int i = 0; i < size; ++i) {
      const int mark = i % 2 == 0 ? 0 : -1;
      Run(QStringLiteral("INSERT INTO Colaboradores(Nombre,CodDiocesis,CodProvincia,codpais,CodCobrador,Eliminado) "
                         "VALUES('Nombre %1',%2,%3,35,%4,%5)")
              .arg(i)
              .arg(i % 60 + 1)
              .arg(i % 52 + 1)
              .arg(i % 9)
              .arg(mark));
      Run(QStringLiteral("INSERT INTO Donativos(CodColaborador,CodTipoDonativo,CodDeduccion_Comunidad,"
                         "CodEmisor_Cuenta,Importe,Eliminado) VALUES(%1,%2,%3,%4,10,%5)")
              .arg(i)
              .arg(i % 12)
              .arg(i % 15)
              .arg(i % 3 + 1)
              .arg(mark));
      Run(QStringLiteral("INSERT INTO Suscripciones(CodColaborador,CodTipoPublicacion,CodEmisor_Cuenta,"
                         "NumeroEjemplares,Importe,Eliminado) VALUES(%1,%2,%3,1,10,%4)")
              .arg(i)
              .arg(i % 5)
              .arg(i % 3 + 1)
              .arg(mark));
    }
    Run(QStringLiteral("INSERT INTO Emisores(Nombre) VALUES('Uno')"));
    for (int i = 0; i < 3; ++i) {
      Run(QStringLiteral("INSERT INTO Emisores_Cuentas(CodEmisor) VALUES(1)"));
    }
    m_connection->CommitTrans();
    m_connection->Close();
    m_connection->Open();
    m_session.connection = m_connection.get();
    m_services = std::make_unique<host::cPrincipal>(m_session);
  }

  void Run(const QString& statement) const { m_connection->Execute(statement); }

  // Records of the rule's table that nobody refers to, made beforehand.
  QList<int> Spare(const Eliminacion::Regla& rule, int count) const {
    QList<int> ids;
    m_connection->BeginTrans();
    for (int i = 0; i < count; ++i) {
      Run(QStringLiteral("INSERT INTO %1(Eliminado) VALUES(0)").arg(QLatin1String(rule.tabla)));
      ids.append(m_connection
                     ->Execute(QStringLiteral("SELECT MAX(%1) AS N FROM %2")
                                   .arg(QLatin1String(rule.clave), QLatin1String(rule.tabla)))
                     ->Field(u"N")
                     .toInt());
    }
    m_connection->CommitTrans();
    return ids;
  }

  void Delete(int node, int id) const {
    objApi() = ServiciosHost(m_services.get());
    Eliminacion::Eliminar(node, id);
  }

  void PrintPlan(const Eliminacion::Regla& rule) const {
    const database::SqliteHandle handle(database::ConnectionString(m_text), database::SqliteHandle::Missing::Refuse);
    const QString text = QString::fromLatin1(rule.consulta).replace(QLatin1String("{ID}"), QLatin1String("7"));
    database::Lexer lexer;
    lexer.Read(text);
    const database::Plan plan = database::Translate(database::Schema::Current(), text, lexer.Tokens());
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

void RaceOfDeletions(const Office& large, const Office& small, const Eliminacion::Regla& rule) {
  QList<int> inLarge = large.Spare(rule, rounds);
  QList<int> inSmall = small.Spare(rule, rounds);
  std::vector<bench::Contestant> contestants{
      {"with a million", [&] { large.Delete(rule.nodo, inLarge.takeFirst()); }},
      {"with a thousand", [&] { small.Delete(rule.nodo, inSmall.takeFirst()); }},
  };
  bench::Race(contestants, rounds);
  bench::Report(std::string("Delete from ") + rule.tabla, contestants, {1.2});
}

// A record that half of all rows refer to: the first reference found must be enough.
void RaceOfRefusals(const Office& large, const Office& small, const Eliminacion::Regla& rule, int id) {
  std::vector<bench::Contestant> contestants{
      {"with a million", [&] { large.Delete(rule.nodo, id); }},
      {"with a thousand", [&] { small.Delete(rule.nodo, id); }},
  };
  bench::Race(contestants, rounds);
  bench::Report(std::string("Refusal in ") + rule.tabla, contestants, {1.2});
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const Silent platform;
  const Office small(few);
  const Office large(many);
  for (const Eliminacion::Regla& rule : Eliminacion::Reglas()) {
    if (rule.consulta != nullptr) {
      RaceOfDeletions(large, small, rule);
      large.PrintPlan(rule);
    }
  }
  for (const Eliminacion::Regla& rule : Eliminacion::Reglas()) {
    // Records with live references among the million.
    const std::map<int, int> referred{{16, 1}, {17, 2}, {18, 1}, {20, 35}, {22, 27}};
    if (const auto found = referred.find(rule.nodo); found != referred.end()) {
      RaceOfRefusals(large, small, rule, found->second);
    }
  }
  return 0;
}
