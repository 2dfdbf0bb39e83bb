#include "entry/Eliminacion.h"
#include "platform/automation/Invoke.h"
#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QMessageBox>

using support::TestHost;

namespace {

// One reference to a record of a node. `insert` makes the referring row; `{ID}` is the record, `{E}` the mark of the
// referring row. Where a reference needs more than one row, statements are separated by semicolons.
struct Reference {
  const char* name;
  int node;
  const char* insert;
};

const Reference references[] = {
    {"bank: account of a branch", 19,
     "INSERT INTO Sucursales(codBanco,Codigo) VALUES({ID},'0001');"
     "INSERT INTO Cuentas(CodSucursal,Eliminado) SELECT MAX(IDSucursal),{E} FROM Sucursales"},
    {"bank: presenter", 19, "INSERT INTO Presentadores(CodBanco,Eliminado) VALUES({ID},{E})"},
    {"diocese: collaborator", 16, "INSERT INTO Colaboradores(CodDiocesis,Eliminado) VALUES({ID},{E})"},
    {"publication: subscription", 25, "INSERT INTO Suscripciones(CodTipoPublicacion,Eliminado) VALUES({ID},{E})"},
    {"province: collaborator", 22, "INSERT INTO Colaboradores(CodProvincia,Eliminado) VALUES({ID},{E})"},
    {"province: issuer", 22, "INSERT INTO Emisores(CodProvincia,Eliminado) VALUES({ID},{E})"},
    {"province: branch", 22, "INSERT INTO Sucursales(CodProvincia,Eliminado) VALUES({ID},{E})"},
    {"province: diocese", 22, "INSERT INTO Diocesis(CodProvincia,Eliminado) VALUES({ID},{E})"},
    {"country: province", 20, "INSERT INTO Provincias(CodPais,Eliminado) VALUES({ID},{E})"},
    {"country: collaborator", 20, "INSERT INTO Colaboradores(codpais,Eliminado) VALUES({ID},{E})"},
    {"deduction: individuals", 27, "INSERT INTO TipoDonativos(CodTipoDeduccionFisica,Eliminado) VALUES({ID},{E})"},
    {"deduction: legal entities", 27, "INSERT INTO TipoDonativos(CodTipoDeduccionJuridica,Eliminado) VALUES({ID},{E})"},
    {"donation type: donation", 17, "INSERT INTO Donativos(CodTipoDonativo,Eliminado) VALUES({ID},{E})"},
    {"issuer: receipt", 18,
     "INSERT INTO Emisores_Cuentas(CodEmisor) VALUES({ID});"
     "INSERT INTO Recibos(CodEmisor_Cuenta,Eliminado) SELECT MAX(IDEmisor_Cuenta),{E} FROM Emisores_Cuentas"},
    {"issuer: pending receipt", 18,
     "INSERT INTO Emisores_Cuentas(CodEmisor) VALUES({ID});"
     "INSERT INTO RecibosPendientes(CodEmisor_Cuenta,Eliminado) SELECT MAX(IDEmisor_Cuenta),{E} FROM Emisores_Cuentas"},
    {"issuer: donation", 18,
     "INSERT INTO Emisores_Cuentas(CodEmisor) VALUES({ID});"
     "INSERT INTO Donativos(CodEmisor_Cuenta,Eliminado) SELECT MAX(IDEmisor_Cuenta),{E} FROM Emisores_Cuentas"},
    {"issuer: subscription", 18,
     "INSERT INTO Emisores_Cuentas(CodEmisor) VALUES({ID});"
     "INSERT INTO Suscripciones(CodEmisor_Cuenta,Eliminado) SELECT MAX(IDEmisor_Cuenta),{E} FROM Emisores_Cuentas"},
    {"presenter: issuer", 21, "INSERT INTO Emisores(CodPresentador,Eliminado) VALUES({ID},{E})"},
    {"presenter: disk", 21, "INSERT INTO Discos(CodPresentador,Eliminado) VALUES({ID},{E})"},
    {"presenter: remittance", 21,
     "INSERT INTO Remesas_Presentadores_Discos(CodPresentador,Eliminado) VALUES({ID},{E})"},
    {"collector: collaborator", 32, "INSERT INTO Colaboradores(CodCobrador,Eliminado) VALUES({ID},{E})"},
    {"regional deduction: donation", 34, "INSERT INTO Donativos(CodDeduccion_Comunidad,Eliminado) VALUES({ID},{E})"},
    {"community: deduction", 35, "INSERT INTO Deduccion_Comunidad(CodComunidad,Eliminado) VALUES({ID},{E})"},
};

const Eliminacion::Regla& RuleOf(int node) {
  for (const Eliminacion::Regla& rule : Eliminacion::Reglas()) {
    if (rule.nodo == node) {
      return rule;
    }
  }
  throw std::runtime_error("no rule");
}

// A fresh record of the node's table, referred to by nobody.
int NewRecord(const TestHost& host, int node) {
  const Eliminacion::Regla& rule = RuleOf(node);
  const QString table = QString::fromLatin1(rule.tabla);
  host.Query(QStringLiteral("INSERT INTO %1(Eliminado) VALUES(0)").arg(table));
  return host.Id(QStringLiteral("SELECT MAX(%1) FROM %2").arg(QString::fromLatin1(rule.clave), table));
}

bool IsMarked(const TestHost& host, int node, int id) {
  const Eliminacion::Regla& rule = RuleOf(node);
  return host.Query(QStringLiteral("SELECT Eliminado FROM %1 WHERE %2=%3")
                        .arg(QString::fromLatin1(rule.tabla), QString::fromLatin1(rule.clave))
                        .arg(id)) == QStringList(QStringLiteral("Verdadero"));
}

void Refer(const TestHost& host, const Reference& reference, int id, int mark) {
  const QStringList statements = QString::fromLatin1(reference.insert).split(u';');
  for (QString statement : statements) {
    host.Query(statement.replace(QLatin1String("{ID}"), QString::number(id))
                   .replace(QLatin1String("{E}"), QString::number(mark)));
  }
}

const QString refusal = QStringLiteral("Prueba|aviso|No puede eliminar ese registro ya que tiene tablas relacionadas");

}  // namespace

Q_DECLARE_METATYPE(const Reference*)

class tst_deletion_rules : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ReferencesKeepARecord_data() {
    QTest::addColumn<const Reference*>("reference");
    for (const Reference& reference : references) {
      QTest::newRow(reference.name) << &reference;
    }
  }
  void ReferencesKeepARecord() {
    QFETCH(const Reference*, reference);
    TestHost host;

    // Referred to by a live row: kept, told, the connection left open, nothing written.
    const int kept = NewRecord(host, reference->node);
    Refer(host, *reference, kept, 0);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.EliminarRegistro(reference->node, kept));
    QCOMPARE(host.driver.TakeBoxes(), QStringList(refusal));
    QCOMPARE(host.platform.beeps, 1);
    QVERIFY(!IsMarked(host, reference->node, kept));
    QCOMPARE(host.connection().Writes(), QStringList());
    QCOMPARE(host.connection().State(), int(adodb::StateOpen));

    // Referred to by deleted rows only: marked, and the connection closed.
    const int gone = NewRecord(host, reference->node);
    Refer(host, *reference, gone, -1);
    EXPECT_CLEAN(host, host.EliminarRegistro(reference->node, gone));
    QVERIFY(IsMarked(host, reference->node, gone));
    QVERIFY(!IsMarked(host, reference->node, kept));
    QCOMPARE(host.connection().State(), int(adodb::StateClosed));
  }

  void UnreferencedRecordsAreMarked_data() {
    QTest::addColumn<int>("node");
    for (const Eliminacion::Regla& rule : Eliminacion::Reglas()) {
      QTest::newRow(rule.tabla) << rule.nodo;
    }
  }
  void UnreferencedRecordsAreMarked() {
    QFETCH(int, node);
    TestHost host;
    const int other = NewRecord(host, node);
    const int id = NewRecord(host, node);
    EXPECT_CLEAN(host, host.EliminarRegistro(node, id));
    QVERIFY(IsMarked(host, node, id));
    QVERIFY(!IsMarked(host, node, other));
    const Eliminacion::Regla& rule = RuleOf(node);
    QCOMPARE(host.connection().Writes().last(), QStringLiteral("UPDATE %1 SET Eliminado=-1 WHERE %2=%3")
                                                    .arg(QLatin1String(rule.tabla), QLatin1String(rule.clave))
                                                    .arg(id));
    QCOMPARE(host.connection().Log().last(), QStringLiteral("CLOSE"));
  }

  void OrderOfTheTests() {
    QList<int> nodes;
    for (const Eliminacion::Regla& rule : Eliminacion::Reglas()) {
      nodes.append(rule.nodo);
    }
    QCOMPARE(nodes, (QList<int>{24, 19, 15, 26, 16, 25, 22, 20, 27, 17, 18, 21, 32, 30, 34, 35}));
  }

  // The statements as they reach the connection, where their text is easiest to get wrong.
  void StatementsToTheLetter_data() {
    QTest::addColumn<int>("node");
    QTest::addColumn<QString>("query");
    QTest::newRow("province")
        << 22
        << QStringLiteral(
               "SELECT codProvincia FROM Diocesis WHERE Diocesis.CodProvincia=7 AND  Eliminado=0 UNION "
               "SELECT codProvincia FROM Colaboradores WHERE Colaboradores.CodProvincia=7 AND  Eliminado=0 UNION "
               "SELECT CodProvincia FROM Emisores WHERE Emisores.CodProvincia=7 AND  Eliminado=0 UNION "
               "SELECT CodProvincia FROM Sucursales WHERE Sucursales.CodProvincia=7 AND  Eliminado=0");
    QTest::newRow("country") << 20
                             << QStringLiteral(
                                    "SELECT codpais FROM provincias WHERE Provincias.Codpais=7 AND  Eliminado=0 UNION "
                                    "SELECT codpais FROM Colaboradores WHERE Colaboradores.codpais=7 AND  Eliminado=0");
    QTest::newRow("deduction")
        << 27
        << QStringLiteral(
               "SELECT CodTipoDeduccionFisica AS CodTipoDeduccion FROM TipoDonativos WHERE  Eliminado=0 AND "
               "(CodTipoDeduccionFisica=7 OR CodTipoDeduccionJuridica=7)");
    QTest::newRow("bank")
        << 19
        << QStringLiteral(
               "SELECT Cuentas.CodSucursal FROM Cuentas,Sucursales WHERE Cuentas.CodSucursal=Sucursales.IDSucursal AND "
               "Sucursales.CodBanco=7 AND Cuentas.Eliminado=False AND Sucursales.Eliminado=false UNION "
               "SELECT Presentadores.CodSucursal FROM Presentadores WHERE Presentadores.Eliminado=false AND "
               "Presentadores.CodBanco=7");
  }
  void StatementsToTheLetter() {
    QFETCH(int, node);
    QFETCH(QString, query);
    TestHost host;
    host.connection().SetHook([](const QString& entry) {
      if (entry.startsWith(u"UPDATE")) {
        throw automation::Error(-2147467259, QStringLiteral("basta"));
      }
    });
    host.driver.Answer(QMessageBox::Ok);
    host.EliminarRegistro(node, 7);
    host.driver.TakeProblems();
    QCOMPARE(host.connection().Log().value(1), query);
  }

  void ADioceseHoldsItsProvinceBackExceptInVelumarInstallations() {
    TestHost host;
    const int id = NewRecord(host, 22);
    host.Query(QStringLiteral("INSERT INTO Diocesis(CodProvincia) VALUES(%1)").arg(id));
    host.session.velumar = true;
    EXPECT_CLEAN(host, host.EliminarRegistro(22, id));
    QVERIFY(IsMarked(host, 22, id));
    QVERIFY(host.connection().Log().filter(QStringLiteral("Diocesis")).isEmpty());
  }

  void AdministratorsStay() {
    TestHost host;
    host.Query(QStringLiteral("INSERT INTO Usuarios(Administrador) VALUES(True)"));
    const int administrator = host.Id(QStringLiteral("SELECT MAX(IDUsuario) FROM Usuarios"));
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.EliminarRegistro(24, administrator));
    QCOMPARE(host.driver.Boxes(),
             QStringList(QStringLiteral(
                 "Prueba|critico|No está autorizado para eliminar a un administrador de la aplicación")));
    QVERIFY(!IsMarked(host, 24, administrator));
    QCOMPARE(host.connection().State(), int(adodb::StateOpen));
  }

  void CascadesMarkDependentRows() {
    TestHost host;
    const int bank = NewRecord(host, 19);
    host.Query(QStringLiteral("INSERT INTO Sucursales(codBanco,Codigo) VALUES(%1,'0001')").arg(bank));
    host.Query(QStringLiteral("INSERT INTO Cuentas(CodSucursal,Eliminado) SELECT MAX(IDSucursal),-1 FROM Sucursales"));
    EXPECT_CLEAN(host, host.EliminarRegistro(19, bank));
    QCOMPARE(host.Query(QStringLiteral("SELECT Eliminado FROM Sucursales WHERE codBanco=%1").arg(bank)),
             QStringList(QStringLiteral("Verdadero")));

    // The issuer's links go, the accounts behind them stay.
    const int issuer = NewRecord(host, 18);
    host.Query(QStringLiteral("INSERT INTO Cuentas(CodSucursal) VALUES(1)"));
    host.Query(QStringLiteral("INSERT INTO Emisores_Cuentas(CodEmisor,CodCuenta) SELECT %1,MAX(IDCuenta) FROM Cuentas")
                   .arg(issuer));
    EXPECT_CLEAN(host, host.EliminarRegistro(18, issuer));
    QCOMPARE(host.Query(QStringLiteral("SELECT Emisores_Cuentas.Eliminado, Cuentas.Eliminado FROM Emisores_Cuentas "
                                       "INNER JOIN Cuentas ON Emisores_Cuentas.CodCuenta=Cuentas.IDCuenta "
                                       "WHERE CodEmisor=%1")
                            .arg(issuer)),
             QStringList(QStringLiteral("Verdadero|Falso")));

    const int sheet = NewRecord(host, 30);
    host.Query(QStringLiteral("INSERT INTO EtiquetasCampos(codEtiqueta) VALUES(%1)").arg(sheet));
    host.Query(QStringLiteral("INSERT INTO EtiquetasCampos(codEtiqueta) VALUES(%1)").arg(sheet + 1));
    EXPECT_CLEAN(host, host.EliminarRegistro(30, sheet));
    QCOMPARE(host.Query(QStringLiteral("SELECT codEtiqueta FROM EtiquetasCampos WHERE Eliminado=-1")),
             QStringList(QString::number(sheet)));
  }

  void UnknownNodeChangesNothingAndCloses() {
    TestHost host;
    EXPECT_CLEAN(host, host.EliminarRegistro(36, 1));
    QCOMPARE(host.connection().Log(), (QStringList{QStringLiteral("OPEN"), QStringLiteral("CLOSE")}));
  }

  void DatabaseErrorsReachTheHost() {
    TestHost host;
    const int id = NewRecord(host, 20);
    host.connection().SetHook([](const QString& entry) {
      if (entry.startsWith(u"UPDATE")) {
        throw automation::Error(-2147467259, QStringLiteral("sin conexión"));
      }
    });
    EXPECT_ERROR(host, host.EliminarRegistro(20, id), -2147467259);
    QVERIFY(!IsMarked(host, 20, id));
  }
};

KEL_TEST(tst_deletion_rules);
#include "tst_deletion_rules.moc"
