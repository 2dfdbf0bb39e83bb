#include "entry/Deletion.h"
#include "host/records/RecordReferences.h"
#include "platform/automation/Invoke.h"
#include "support/Expect.h"

#include <QMessageBox>

#include <algorithm>

using namespace Qt::StringLiterals;

using adodb::Verbatim;
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

// The nodes in the order in which they are compared, with the table and key of their records.
struct Marked {
  int node;
  QString table;
  QString key;
};

const Marked marked[] = {
    {24, u"Usuarios"_s, u"IDUsuario"_s},
    {19, u"Bancos"_s, u"IDBanco"_s},
    {15, u"Cabeceras"_s, u"IDCabecera"_s},
    {26, u"CartasModelo"_s, u"IDCartaModelo"_s},
    {16, u"Diocesis"_s, u"IDDiocesis"_s},
    {25, u"TipoPublicaciones"_s, u"IDTipoPublicacion"_s},
    {22, u"Provincias"_s, u"IDProvincia"_s},
    {20, u"Paises"_s, u"IDPais"_s},
    {27, u"TipoDeducciones"_s, u"IDTipoDeduccion"_s},
    {17, u"TipoDonativos"_s, u"IDTipoDonativo"_s},
    {18, u"Emisores"_s, u"IDEmisor"_s},
    {21, u"Presentadores"_s, u"IDPresentador"_s},
    {32, u"Cobradores"_s, u"IDCobrador"_s},
    {30, u"Etiquetas"_s, u"IDEtiqueta"_s},
    {34, u"Deduccion_Comunidad"_s, u"IDDeduccion_Comunidad"_s},
    {35, u"ComunidadAutonoma"_s, u"IDComunidad"_s},
};

const Marked& MarkedOf(int node) {
  return *std::ranges::find(marked, node, &Marked::node);
}

// A fresh record of the node's table, referred to by nobody.
int NewRecord(const TestHost& host, int node) {
  const Marked& record = MarkedOf(node);
  host.Query(u"INSERT INTO {}(Eliminado) VALUES(0)", Verbatim{record.table});
  return host.Id(u"SELECT MAX({}) FROM {}", Verbatim{record.key}, Verbatim{record.table});
}

bool IsMarked(const TestHost& host, int node, int id) {
  const Marked& record = MarkedOf(node);
  return host.Query(u"SELECT Eliminado FROM {} WHERE {}={}", Verbatim{record.table}, Verbatim{record.key}, id) ==
         QStringList(u"Verdadero"_s);
}

void Refer(const TestHost& host, const Reference& reference, int id, int mark) {
  const QStringList statements = QString::fromLatin1(reference.insert).split(u';');
  for (QString statement : statements) {
    support::Rows(host.Connection(), statement.replace(QLatin1String("{ID}"), QString::number(id))
                                         .replace(QLatin1String("{E}"), QString::number(mark)));
  }
}

const QString refusal = u"Prueba|aviso|No puede eliminar ese registro ya que tiene tablas relacionadas"_s;

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
    QCOMPARE(host.desktop.beeps, 1);
    QVERIFY(!IsMarked(host, reference->node, kept));
    QCOMPARE(host.Recording().Writes(), QStringList());
    QCOMPARE(host.Recording().State(), int(adodb::StateOpen));
    // The reference host tells the same uses when it explains why.
    QCOMPARE(host::CountUses(host.Recording(), reference->node, kept, false).size(), 1);

    // Referred to by deleted rows only: marked, and the connection closed.
    const int gone = NewRecord(host, reference->node);
    Refer(host, *reference, gone, -1);
    QCOMPARE(host::CountUses(host.Recording(), reference->node, gone, false).size(), 0);
    EXPECT_CLEAN(host, host.EliminarRegistro(reference->node, gone));
    QVERIFY(IsMarked(host, reference->node, gone));
    QVERIFY(!IsMarked(host, reference->node, kept));
    QCOMPARE(host.Recording().State(), int(adodb::StateClosed));
  }

  void UnreferencedRecordsAreMarked_data() {
    QTest::addColumn<int>("node");
    for (const Marked& record : marked) {
      QTest::newRow(qPrintable(record.table)) << record.node;
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
    QCOMPARE(host.Recording().Log().last(), u"CLOSE"_s);
  }

  void OrderOfTheTests() {
    const std::span<const entry::deletion::Rule> rules = entry::deletion::Rules();
    QVERIFY(std::ranges::equal(rules, marked, {}, &entry::deletion::Rule::node, &Marked::node));
  }

  void ADioceseHoldsItsProvinceBackExceptInVelumarInstallations() {
    TestHost host;
    const int id = NewRecord(host, 22);
    host.Query(u"INSERT INTO Diocesis(CodProvincia) VALUES({})", id);
    host.session.velumar = true;
    EXPECT_CLEAN(host, host.EliminarRegistro(22, id));
    QVERIFY(IsMarked(host, 22, id));
    QVERIFY(host.Recording().Log().filter(u"Diocesis"_s).isEmpty());
  }

  void AdministratorsStay() {
    TestHost host;
    host.Query(u"INSERT INTO Usuarios(Administrador) VALUES(True)");
    const int administrator = host.Id(u"SELECT MAX(IDUsuario) FROM Usuarios");
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.EliminarRegistro(24, administrator));
    QCOMPARE(host.driver.Boxes(),
             QStringList(u"Prueba|critico|No está autorizado para eliminar a un administrador de la aplicación"_s));
    QVERIFY(!IsMarked(host, 24, administrator));
    QCOMPARE(host.Recording().State(), int(adodb::StateOpen));
  }

  void CascadesMarkDependentRows() {
    TestHost host;
    const int bank = NewRecord(host, 19);
    host.Query(u"INSERT INTO Sucursales(codBanco,Codigo) VALUES({},'0001')", bank);
    host.Query(u"INSERT INTO Cuentas(CodSucursal,Eliminado) SELECT MAX(IDSucursal),-1 FROM Sucursales");
    EXPECT_CLEAN(host, host.EliminarRegistro(19, bank));
    QCOMPARE(host.Query(u"SELECT Eliminado FROM Sucursales WHERE codBanco={}", bank), QStringList(u"Verdadero"_s));

    // The issuer's links go, the accounts behind them stay.
    const int issuer = NewRecord(host, 18);
    host.Query(u"INSERT INTO Cuentas(CodSucursal) VALUES(1)");
    host.Query(u"INSERT INTO Emisores_Cuentas(CodEmisor,CodCuenta) SELECT {},MAX(IDCuenta) FROM Cuentas", issuer);
    EXPECT_CLEAN(host, host.EliminarRegistro(18, issuer));
    QCOMPARE(host.Query(u"SELECT Emisores_Cuentas.Eliminado, Cuentas.Eliminado FROM Emisores_Cuentas "
                        "INNER JOIN Cuentas ON Emisores_Cuentas.CodCuenta=Cuentas.IDCuenta "
                        "WHERE CodEmisor={}",
                        issuer),
             QStringList(u"Verdadero|Falso"_s));

    const int sheet = NewRecord(host, 30);
    host.Query(u"INSERT INTO EtiquetasCampos(codEtiqueta) VALUES({})", sheet);
    host.Query(u"INSERT INTO EtiquetasCampos(codEtiqueta) VALUES({})", sheet + 1);
    EXPECT_CLEAN(host, host.EliminarRegistro(30, sheet));
    QCOMPARE(host.Query(u"SELECT codEtiqueta FROM EtiquetasCampos WHERE Eliminado=-1"),
             QStringList(QString::number(sheet)));
  }

  void UnknownNodeChangesNothingAndCloses() {
    TestHost host;
    EXPECT_CLEAN(host, host.EliminarRegistro(36, 1));
    QCOMPARE(host.Recording().Log(), (QStringList{u"OPEN"_s, u"CLOSE"_s}));
  }

  void DatabaseErrorsReachTheHost() {
    TestHost host;
    const int id = NewRecord(host, 20);
    host.Recording().SetHook([](const QString& entry) {
      if (entry.startsWith(u"UPDATE")) {
        throw automation::Error(-2147467259, u"sin conexión"_s);
      }
    });
    EXPECT_ERROR(host, host.EliminarRegistro(20, id), -2147467259);
    QVERIFY(!IsMarked(host, 20, id));
  }
};

KEL_TEST(tst_deletion_rules);
#include "tst_deletion_rules.moc"
