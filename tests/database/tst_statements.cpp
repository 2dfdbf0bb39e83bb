#include "database/dialect/Lexer.h"
#include "database/dialect/StatementWriter.h"
#include "database/sqlite/SqliteHandle.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

#include <sqlite3.h>

using adodb::Verbatim;
using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// The statements that the dialogs write, to the letter: every one runs, and those that look for references among
/// many rows are served by indexes.
class tst_statements : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { m_database = std::make_unique<TestDatabase>(database::Content::Demonstration); }
  void EveryStatementRuns_data();
  void EveryStatementRuns();
  void IndexesServe_data();
  void IndexesServe();
  void PriceUpdate();

 private:
  std::unique_ptr<TestDatabase> m_database;
  std::unique_ptr<TestDatabase> m_filled;
};

namespace {

void AddStatements(std::initializer_list<const char*> statements) {
  QTest::addColumn<QString>("statement");
  int number = 0;
  for (const char* statement : statements) {
    QTest::addRow("%d %.60s", ++number, statement) << QString::fromUtf8(statement);
  }
}

// Some thousand rows in every table, so that an index pays.
void FillEveryTable(const QString& path) {
  const database::SqliteHandle handle(database::ConnectionString(database::ConnectionStringForFile(path)),
                                      database::SqliteHandle::Missing::Refuse);
  for (const database::Table& table : database::Schema::Current().Tables()) {
    QStringList names;
    QStringList values;
    for (const database::Column& column : table.columns) {
      if (column.type == database::ColumnType::Id || column.type == database::ColumnType::Text) {
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
  const database::Plan plan = database::Translate(database::Schema::Current(), statement, lexer.Tokens());
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

// Of the dialogs that this version lacks; the statements of the others run in the tests of their dialogs.
void tst_statements::EveryStatementRuns_data() {
  AddStatements(
      {"SELECT idpresentador FROM presentadores WHERE sufijo='000'",
       "SELECT Nombre,Nif,Sufijo,CodBanco,CodSucursal FROM Presentadores WHERE IDPresentador=1",
       "INSERT INTO Presentadores(Nombre,Nif,Sufijo,CodBanco,CodSucursal) VALUES ('P','99000000X','009',1,2)",
       "SELECT MAX(idpresentador) AS numero FROM presentadores",
       "UPDATE Presentadores SET Nombre='P',Nif='x',Sufijo='009', CodBanco=1, CodSucursal=2 WHERE idPresentador=3",
       "SELECT Presentadores.IDPresentador, Presentadores.Nombre, Bancos.Nombre As Banco FROM Presentadores INNER JOIN "
       "Bancos ON Presentadores.codBanco=Bancos.IDBanco WHERE Presentadores.Eliminado=0 ORDER BY Presentadores.Nombre",
       "SELECT IDProvincia FROM Provincias WHERE Eliminado=false AND Ucase(Nombre)='MADRID' AND CodPais=35",
       "SELECT Emisores.Nombre AS Emisor,Cif,Sufijo,CodPresentador,Direccion,Poblacion,CodProvincia,CP,CodPais FROM "
       "Emisores LEFT JOIN Provincias ON Emisores.CodProvincia=Provincias.IDProvincia WHERE IDEmisor=1",
       "SELECT idemisor FROM emisores WHERE sufijo='000'",
       "INSERT INTO Emisores(Nombre,Cif,Sufijo,CodPresentador,Direccion,Poblacion,CodProvincia,CP) "
       "VALUES('E','C','003',1,'D','P',28,'28001')",
       "UPDATE Emisores SET "
       "Nombre='E',Cif='C',Sufijo='003',Codpresentador=1,Direccion='D',Poblacion='P',CodProvincia=28,CP='28001' WHERE "
       "IDEmisor=4",
       "SELECT Cobradores.Nombre, Cobradores.Apellido1, Cobradores.Apellido2, Cobradores.NIF, Cobradores.Direccion, "
       "Cobradores.Poblacion FROM Cobradores WHERE Cobradores.IDCobrador=1",
       "INSERT INTO Cobradores (Nombre, Apellido1, Apellido2, NIF, Direccion, Poblacion) "
       "VALUES('a','b','c','d','e','f')",
       "UPDATE Cobradores SET Nombre='a',Apellido1='b',Apellido2='c',NIF='d',Direccion='e',Poblacion='f' WHERE "
       "Cobradores.IDCobrador=4",
       "SELECT * FROM Provincias WHERE Eliminado=0 ORDER BY Nombre",
       "SELECT Diocesis.Nombre AS Diocesis,Diocesis.CodProvincia AS CodProvincia,Provincias.Nombre AS Provincia FROM "
       "Diocesis LEFT JOIN Provincias ON Diocesis.CodProvincia=Provincias.IDProvincia WHERE Diocesis.IDDiocesis=1 AND "
       "Diocesis.Eliminado=0",
       "INSERT INTO Diocesis(Nombre,CodProvincia,Eliminado) VALUES('x',28,0)",
       "UPDATE Diocesis SET Nombre='x', CodProvincia=28 WHERE IDDiocesis=70",
       "SELECT Nombre,Codigo FROM ComunidadAutonoma WHERE IDComunidad=1",
       "UPDATE ComunidadAutonoma SET Codigo='01',Nombre='Andalucía' WHERE IDComunidad=1",
       "INSERT INTO ComunidadAutonoma(Nombre,Codigo) VALUES('x','99')",
       "SELECT TipoDeducciones.IDTipoDeduccion,TipoDeducciones.Porcentaje FROM TipoDeducciones WHERE Eliminado=0  "
       "ORDER BY Porcentaje",
       "SELECT Deduccion_Comunidad.CodComunidad AS CodComunidad,Deduccion_Comunidad.CodDeduccion AS CodDeduccion, "
       "ComunidadAutonoma.Nombre AS Nombre FROM Deduccion_Comunidad INNER JOIN ComunidadAutonoma  ON "
       "Deduccion_Comunidad.CodComunidad=ComunidadAutonoma.IDComunidad WHERE "
       "Deduccion_Comunidad.IDDeduccion_Comunidad=1",
       "INSERT INTO Deduccion_Comunidad(CodComunidad,CodDeduccion) VALUES(1,2)",
       "SELECT IDTipoDeduccion FROM TipoDeducciones WHERE Porcentaje=80 AND IDTipoDeduccion <> 1",
       "INSERT INTO TipoDeducciones (Porcentaje) VALUES ('33')",
       "UPDATE TipoDeducciones SET Porcentaje = 34 WHERE IDTipoDeduccion = 12",
       "SELECT CodTipoDeduccionJuridica, CodTipoDeduccionFisica, Nombre, TextoRecibo, TipoA,Modelo182, GenerarRecibo "
       "FROM TipoDonativos WHERE IDTipoDonativo = 1",
       "INSERT INTO TipoDonativos (CodTipoDeduccionJuridica, CodTipoDeduccionFisica, Nombre, TextoRecibo, TipoA, "
       "Modelo182, GenerarRecibo) VALUES (1, 2, \"D''Ors\", \"Recibo; 100%\", -1,True,-1)",
       "UPDATE TipoDonativos SET CodTipoDeduccionJuridica = 1, CodTipoDeduccionFisica = 2, Nombre = 'x', TextoRecibo = "
       "'y', TipoA = -1, Modelo182= False, GenerarRecibo =0 WHERE IDTipoDonativo = 6",
       "UPDATE Donativos SET TextoRecibo='O''Donnell' WHERE CodTipoDonativo = 5",
       "SELECT Nombre, TextoRecibo, ImporteNacional, ImporteExtranjero FROM TipoPublicaciones WHERE IDTipoPublicacion "
       "= 1",
       "SELECT TipoSuscripciones.IDTipoSuscripcion, TipoSuscripciones.Nombre AS Suscripcion, COUNT(*) AS Contador, "
       "SUM(Suscripciones.Importe) AS ImporteTotal FROM (Suscripciones INNER JOIN TipoSuscripciones ON "
       "Suscripciones.CodTipoSuscripcion = TipoSuscripciones.IDTipoSuscripcion) INNER JOIN TipoPublicaciones ON "
       "Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion WHERE Suscripciones.Eliminado = 0 AND "
       "TipoSuscripciones.Eliminado = 0 AND TipoPublicaciones.Eliminado = 0 AND TipoPublicaciones.IDTipoPublicacion = "
       "1GROUP BY TipoSuscripciones.IDTipoSuscripcion, TipoSuscripciones.Nombre",
       "INSERT INTO TipoPublicaciones (Nombre, ImporteNacional, ImporteExtranjero, TextoRecibo) VALUES ( 'Boletín', "
       "'12,00', '18,50', 'Suscripción anual')",
       "UPDATE TipoPublicaciones SET Nombre = 'x', ImporteNacional = '1.012,00', ImporteExtranjero = '1,5', "
       "TextoRecibo = '' WHERE IDTipoPublicacion = 4",
       "SELECT * FROM ETIQUETAS WHERE IDETIQUETA = 1",
       "SELECT EtiquetasCampos.IDEtiquetaCampo, EtiquetasCampos.Linea, EtiquetasCampos.Orden, "
       "EtiquetasCampos.NombreCampo, EtiquetasCampos.codTipoCampoEtiqueta, TipoCamposEtiquetas.codTabla FROM "
       "EtiquetasCampos LEFT JOIN TipoCamposEtiquetas ON "
       "EtiquetasCampos.codTipoCampoEtiqueta=TipoCamposEtiquetas.IDTipoCampoEtiqueta WHERE "
       "EtiquetasCampos.codEtiqueta=1 AND EtiquetasCampos.Disco=0",
       "INSERT INTO ETIQUETAS (NOMBRE, NETIQUETASTOTAL, NETIQUETASANCHO, ALTOETIQUETA, ANCHOETIQUETA, ALTOSEPARACION, "
       "ANCHOSEPARACION, ALTO1ETIQUETA, ANCHO1ETIQUETA, NULTIMAETIQUETA, ULTIMOUTILIZADO, DISCO, ENVIOPOSTAL) VALUES ( "
       "'Hoja', 40 , 4,'3,7','7', '0','0', '1,3','0,5', 0,0, 0, -1 )",
       "UPDATE ETIQUETAS SET  NOMBRE = 'Hoja',  NETIQUETASTOTAL = 40,  NETIQUETASANCHO = 4,  ALTOETIQUETA = '3,7',  "
       "ANCHOETIQUETA = '7',  ALTOSEPARACION= '0',  ANCHOSEPARACION= '0',  ALTO1ETIQUETA= '1,3',  ANCHO1ETIQUETA= "
       "'0,5',  NULTIMAETIQUETA= 0,  ULTIMOUTILIZADO= 0,  DISCO= -1,  ENVIOPOSTAL= 0  WHERE IDetiqueta= 4",
       "DELETE FROM ETIQUETASCAMPOS WHERE CODETIQUETA=4 AND ETIQUETASCAMPOS.DISCO=-1",
       "INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, codTipoCampoEtiqueta) VALUES "
       "(4,'[EMISORES].[CIF]',-1,1,1,0)",
       "UPDATE EtiquetasCampos SET NombreCampo='*y',Linea=1,Orden=2,codTipoCampoEtiqueta=0 WHERE IDEtiquetaCampo=1",
       "DELETE FROM EtiquetasCampos WHERE IDEtiquetaCampo=99",
       "SELECT DISTINCT TipoCamposEtiquetas.codTabla, TipoCamposEtiquetas.NombreTabla FROM TipoCamposEtiquetas",
       "SELECT TipoCamposEtiquetas.IDTipoCampoEtiqueta, TipoCamposEtiquetas.NombreCampo FROM TipoCamposEtiquetas WHERE "
       "TipoCamposEtiquetas.codTabla=1",
       "SELECT Tipo FROM configuracion",
       "SELECT * FROM CartasModelo WHERE IDCartaModelo=1",
       "INSERT INTO CartasModelo (Nombre, Contenido, MargenIzquierdo, MargenDerecho) VALUES ('c','{\\rtf1 "
       "\\''e1}','2,5','3')",
       "SELECT MAX(IDCartaModelo) AS maximo FROM CartasModelo ",
       "UPDATE CartasModelo SET Contenido='x', MargenIzquierdo='1,25', MargenDerecho='0' WHERE IDCartaModelo=4",
       "DELETE FROM BloqueoRegistros WHERE codUsuario=1 AND campoID='IDCartaModelo' AND ValorID=4",
       "SELECT * FROM Cabeceras WHERE IDCabecera=1 AND Eliminado=0",
       "INSERT INTO Cabeceras(Nombre,Linea1,Linea2,Linea3,Linea4,Linea5,Eliminado) VALUES('n','1','2','3','4','5',0)",
       "SELECT MAX(IDCabecera) AS Maximo FROM Cabeceras WHERE Eliminado=0",
       "UPDATE Cabeceras SET Linea1='1',Linea2='2',Linea3='3',Linea4='4',Linea5='5',Nombre='n' WHERE IDCabecera=3",
       "SELECT Encabezados.IDEncabezado, Encabezados.Nombre, Encabezados.codDescripcion, Encabezados.Descripcion FROM "
       "Encabezados WHERE Encabezados.IDEncabezado=1",
       "UPDATE Encabezados SET Nombre='Estimado:' WHERE Encabezados.IDEncabezado=1"});
}

void tst_statements::EveryStatementRuns() {
  QFETCH(QString, statement);
  const QString answer = Outcome(m_database->Connection(), statement);
  QVERIFY2(!answer.startsWith(u"error"_s), qPrintable(answer));
  if (statement.startsWith(u"SELECT"_s) && !statement.contains(u"<>"_s)) {
    QVERIFY(!answer.isEmpty());
  }
}

void tst_statements::IndexesServe_data() {
  m_filled = std::make_unique<TestDatabase>();
  FillEveryTable(m_filled->Path());
  AddStatements(
      {"SELECT Cuentas.CodSucursal FROM Cuentas,Sucursales WHERE Cuentas.CodSucursal=Sucursales.IDSucursal AND "
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
       "Suscripciones.CodColaborador WHERE CodPais = 35 AND IDTipoPublicacion = 5)"});
}

void tst_statements::IndexesServe() {
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

void tst_statements::PriceUpdate() {
  adodb::Connection& connection = m_database->Connection();
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
  QVERIFY(m_database->Id(u"SELECT COUNT(*) FROM Suscripciones WHERE CodTipoPublicacion=1") > 10);
  QCOMPARE(ErrorOf([&] { update(u"doce", u"="); }), 13);
}

KEL_TEST(tst_statements);
#include "tst_statements.moc"
