#include "database/dialect/Lexer.h"
#include "database/dialect/StatementWriter.h"
#include "database/sqlite/SqliteHandle.h"
#include "database/sqlite/SqliteTarget.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

#include <algorithm>

#include <sqlite3.h>

using adodb::Verbatim;
using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// The statements that look for references among many rows, and the nested update, to the letter: indexes serve them.
class tst_indexes : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void IndexesServe_data();
  void IndexesServe();
  void PriceUpdate();

 private:
  std::unique_ptr<TestDatabase> m_filled;
};

namespace {

// Some thousand rows in every table, so that an index pays.
void FillEveryTable(const QString& path) {
  const database::SqliteHandle handle(database::ConnectionString(database::ConnectionStringForFile(path)),
                                      database::SqliteHandle::Missing::Refuse);
  for (const database::Table& table : database::Schema::Current().Tables()) {
    QStringList names;
    QStringList values;
    for (const database::Column& column : table.columns) {
      const auto isKey = [&](const database::Index& index) {
        return index.unique && index.columns == QStringList(column.name);
      };
      if (column.type == database::ColumnType::Id && std::ranges::any_of(table.indexes, isKey)) {
        names += database::QuotedName(column.name);
        values += u"i"_s;
      } else if (column.type == database::ColumnType::Id || column.type == database::ColumnType::Text) {
        names += database::QuotedName(column.name);
        values += column.type == database::ColumnType::Id ? u"i % "_s + QString::number(200 + values.size())
                                                          : u"'texto ' || i"_s;
      }
    }
    if (!names.isEmpty()) {
      handle.Run(adodb::StatementText(u"WITH RECURSIVE n(i) AS (SELECT 1000 UNION ALL SELECT i + 1 FROM n WHERE "
                                      u"i < 5000) INSERT INTO {} ({}) SELECT {} FROM n",
                                      Verbatim{database::QuotedName(table.name)}, Verbatim{names.join(u',')},
                                      Verbatim{values.join(u',')})
                     .toUtf8());
    }
  }
  handle.Run("ANALYZE");
}

QStringList PlanOf(const QString& path, const QString& statement) {
  database::Lexer lexer;
  lexer.Read(statement);
  const database::Plan plan =
      database::Translate(database::SqliteTarget::Instance(), database::Schema::Current(), statement, lexer.Tokens());
  const database::SqliteHandle handle(database::ConnectionString(database::ConnectionStringForFile(path)),
                                      database::SqliteHandle::Missing::Refuse);
  const database::SqliteStatement explain = handle.Prepare("EXPLAIN QUERY PLAN " + plan.sql);
  QStringList steps;
  while (sqlite3_step(explain.get()) == SQLITE_ROW) {
    steps += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(explain.get(), 3)));
  }
  return steps;
}

}  // namespace

void tst_indexes::IndexesServe_data() {
  m_filled = std::make_unique<TestDatabase>();
  FillEveryTable(m_filled->Path());
  QTest::addColumn<QString>("statement");
  const char* const statements[] = {
      "SELECT Cuentas.CodSucursal FROM Cuentas,Sucursales WHERE Cuentas.CodSucursal=Sucursales.IDSucursal AND "
      "Sucursales.CodBanco=5 AND Cuentas.Eliminado=False AND Sucursales.Eliminado=false UNION SELECT "
      "Presentadores.CodSucursal FROM Presentadores WHERE Presentadores.Eliminado=false AND Presentadores.CodBanco=5",
      "UPDATE Sucursales SET Eliminado=-1 WHERE CodBanco=5",
      "SELECT IDColaborador FROM Colaboradores WHERE CodDiocesis=5 AND  Eliminado=0",
      "SELECT IDSuscripcion FROM Suscripciones WHERE CodTipoPublicacion=5 AND  Eliminado=0",
      "SELECT codpais FROM provincias WHERE Provincias.Codpais=5 AND  Eliminado=0 UNION SELECT codpais FROM "
      "Colaboradores "
      "WHERE Colaboradores.codpais=5 AND  Eliminado=0",
      "SELECT CodTipoDeduccionFisica AS CodTipoDeduccion FROM TipoDonativos WHERE  Eliminado=0 AND "
      "(CodTipoDeduccionFisica=5 OR CodTipoDeduccionJuridica=5)",
      "SELECT IDDonativo FROM Donativos WHERE  Eliminado=0 AND CodTipoDonativo=5",
      "SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Recibos WHERE Emisores_Cuentas.CodEmisor=5 AND "
      "Emisores_Cuentas.Eliminado=false AND Emisores_Cuentas.IDEmisor_Cuenta=Recibos.CodEmisor_Cuenta AND "
      "Recibos.Eliminado=false UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,RecibosPendientes WHERE "
      "Emisores_Cuentas.CodEmisor=5 AND Emisores_Cuentas.Eliminado=false AND "
      "Emisores_Cuentas.IDEmisor_Cuenta=RecibosPendientes.CodEmisor_Cuenta AND RecibosPendientes.Eliminado=false "
      "UNION "
      "SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Donativos WHERE Emisores_Cuentas.CodEmisor=5 AND "
      "Emisores_Cuentas.Eliminado=false AND Emisores_Cuentas.IDEmisor_Cuenta=Donativos.CodEmisor_Cuenta AND "
      "Donativos.Eliminado=false UNION SELECT IDEmisor_Cuenta FROM Emisores_Cuentas,Suscripciones WHERE "
      "Emisores_Cuentas.CodEmisor=5 AND Emisores_Cuentas.Eliminado=false AND "
      "Emisores_Cuentas.IDEmisor_Cuenta=Suscripciones.CodEmisor_Cuenta AND Suscripciones.Eliminado=false ",
      "UPDATE Emisores_Cuentas SET Eliminado=-1 WHERE CodEmisor=5",
      "SELECT CodPresentador FROM Emisores WHERE Emisores.Eliminado=false AND Emisores.CodPresentador=5 UNION SELECT "
      "CodPresentador FROM Discos WHERE Discos.Eliminado=false AND Discos.CodPresentador=5 UNION SELECT "
      "CodPresentador FROM "
      "Remesas_Presentadores_Discos WHERE Remesas_Presentadores_Discos.Eliminado=false AND "
      "Remesas_Presentadores_Discos.CodPresentador=5",
      "SELECT IDColaborador FROM Colaboradores WHERE  Eliminado=0 AND CodCobrador=5",
      "UPDATE EtiquetasCampos SET Eliminado=-1 WHERE  Eliminado=0 AND CodEtiqueta=5",
      "SELECT IDDonativo FROM Donativos WHERE  Eliminado=0 AND CodDeduccion_Comunidad=5",
      "SELECT IDDeduccion_Comunidad FROM Deduccion_Comunidad WHERE  Eliminado=0 AND CodComunidad=5",
      "SELECT codProvincia FROM Diocesis WHERE Diocesis.CodProvincia=5 AND  Eliminado=0 UNION SELECT codProvincia "
      "FROM "
      "Colaboradores WHERE Colaboradores.CodProvincia=5 AND  Eliminado=0 UNION SELECT CodProvincia FROM Emisores "
      "WHERE "
      "Emisores.CodProvincia=5 AND  Eliminado=0 UNION SELECT CodProvincia FROM Sucursales WHERE "
      "Sucursales.CodProvincia=5 "
      "AND  Eliminado=0",
      "SELECT codSucursal FROM Colaboradores_Cuentas WHERE Colaboradores_Cuentas.Eliminado=0 AND "
      "Colaboradores_Cuentas.codSucursal=5 UNION SELECT codSucursal FROM Cuentas WHERE Cuentas.Eliminado=0 AND "
      "Cuentas.codSucursal=5",
      "SELECT Bancos.IDBanco FROM Bancos WHERE Bancos.Eliminado=0 AND Bancos.Numero='9101' AND Bancos.IDBanco<>1",
      "SELECT idpais FROM paises WHERE eliminado=false AND ucase(Nombre)='ESPAÑA'",
      "SELECT MAX(IDPais) AS numero FROM Paises",
      "UPDATE Donativos SET TextoRecibo='x' WHERE CodTipoDonativo = 5",
      "UPDATE Suscripciones SET Importe = NumeroEjemplares * '12,50' WHERE IDSuscripcion IN (SELECT "
      "Suscripciones.IDSuscripcion FROM Colaboradores INNER JOIN (Suscripciones INNER JOIN TipoPublicaciones ON "
      "Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion) ON Colaboradores.IDColaborador = "
      "Suscripciones.CodColaborador WHERE CodPais = 35 AND IDTipoPublicacion = 5)"};
  int number = 0;
  for (const char* statement : statements) {
    QTest::addRow("%d %.60s", ++number, statement) << QString::fromUtf8(statement);
  }
}

void tst_indexes::IndexesServe() {
  QFETCH(QString, statement);
  const QStringList steps = PlanOf(m_filled->Path(), statement);
  QVERIFY(!steps.isEmpty());
  const QString all = steps.join(u'\n');
  for (const QString& step : steps) {
    // The rows of a union come one by one out of a subquery; a table must be searched.
    QVERIFY2(!step.startsWith(u"SCAN"_s) || step.startsWith(u"SCAN (subquery"_s), qPrintable(all));
    QVERIFY2(!step.contains(u"AUTOMATIC"_s), qPrintable(all));
  }
  QVERIFY2(all.contains(u"SEARCH"_s), qPrintable(all));
}

void tst_indexes::PriceUpdate() {
  const TestDatabase database(database::Content::Demonstration);
  adodb::Connection& connection = database.Connection();
  const auto update = [&](const char16_t* price, const char16_t* where) {
    adodb::Execute(
        connection,
        u"UPDATE Suscripciones SET Importe = NumeroEjemplares * '{}' WHERE IDSuscripcion IN (SELECT "
        "Suscripciones.IDSuscripcion FROM Colaboradores INNER JOIN (Suscripciones INNER JOIN TipoPublicaciones ON "
        "Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion) ON Colaboradores.IDColaborador = "
        "Suscripciones.CodColaborador WHERE CodPais {} 35 AND IDTipoPublicacion = 1)",
        price, Verbatim{QString::fromUtf16(where)});
  };
  update(u"1.000,10", u"=");
  update(u"0,10", u"<>");
  const QString wrong =
      Outcome(connection,
              u"SELECT COUNT(*) FROM Suscripciones INNER JOIN Colaboradores ON CodColaborador="
              "IDColaborador WHERE CodTipoPublicacion=1 AND NOT ((codpais=35 AND "
              "Importe=NumeroEjemplares*1000.1) OR (codpais<>35 AND Importe=NumeroEjemplares*'0,1'))"_s);
  QCOMPARE(wrong, u"0"_s);
  QVERIFY(database.Id(u"SELECT COUNT(*) FROM Suscripciones WHERE CodTipoPublicacion=1") > 10);
  QCOMPARE(ErrorOf([&] { update(u"doce", u"="); }), 13);
}

KEL_TEST(tst_indexes);
#include "tst_indexes.moc"
