#include "host/services/ServiceClasses.h"
#include "host/verification/CheckBench.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QMap>
#include <QProcess>
#include <QScopeGuard>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

// What is wrong with each member, "" for nothing.
QMap<QString, QString> Verdicts(QObject& object, QObject& second, bool lists, const support::TestDatabase& database) {
  host::CheckBench bench;
  QMap<QString, QString> verdicts;
  for (const host::MemberCheck& check :
       lists ? host::ListChecks(object, &database.Connection(), bench) : host::ServiceChecks(object, second, bench)) {
    verdicts[check.member] = host::FaultOf(check);
  }
  return verdicts;
}

}  // namespace

/// What `kel-host verificar-servicios` says of services that are right, and of ones with faults.
class tst_verification : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void RightServicesHaveNoFault();
  void FaultsAreNamed_data();
  void FaultsAreNamed();
  void Program_data();
  void Program();
};

void tst_verification::RightServicesHaveNoFault() {
  const support::TestDatabase database;
  host::Session session;
  session.connection = &database.Connection();
  session.settingsFile = database.Path(u"kel-host.ini"_s);
  host::RegisterClasses(session);
  const auto unregister = qScopeGuard([] { host::UnregisterClasses(); });
  for (const bool lists : {false, true}) {
    const QString progId = lists ? u"KelApi.cListas"_s : u"KelAPI.cPrincipal"_s;
    const auto object = automation::CreateObject(progId);
    const QMap<QString, QString> verdicts = Verdicts(*object, *automation::CreateObject(progId), lists, database);
    QCOMPARE(verdicts.size(), lists ? 8 : 27);
    for (auto verdict = verdicts.begin(); verdict != verdicts.end(); ++verdict) {
      QVERIFY2(verdict->isEmpty(), qPrintable(verdict.key() + u": "_s + *verdict));
    }
  }
  QCOMPARE(database.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
}

void tst_verification::FaultsAreNamed_data() {
  QTest::addColumn<QString>("progId");
  QTest::addColumn<QString>("member");
  QTest::addColumn<QString>("fault");
  const auto row = [](const QString& progId, const QString& member, const QString& fault) {
    QTest::newRow(qPrintable(progId + u'.' + member)) << progId << member << fault;
  };
  const QString services = u"Mala.cPrincipal"_s;
  row(services, u"IDNodo"_s, {});
  row(services, u"Accion"_s, u"no se puede escribir"_s);
  row(services, u"IDSeleccionado"_s, u"error 6"_s);
  row(services, u"IDAux"_s, u"no guarda el valor"_s);
  row(services, u"congestion"_s, u"adodb::Connection*"_s);
  row(services, u"tituloaplicacion"_s, u"contesta int (20) donde el contrato pide un texto"_s);
  row(services, u"Icono"_s, {});
  row(services, u"strFichAyuda"_s, u"falta"_s);
  row(services, u"PathNodo"_s, {});
  row(services, u"IDUsuario"_s, u"contesta QString"_s);
  row(services, u"TipoUsuario"_s, {});
  row(services, u"velumar"_s, u"pide un valor lógico"_s);
  row(services, u"BloqueoRegistro"_s, u"el argumento 5 («bool») tiene que ser por referencia"_s);
  row(services, u"DesbloqueoRegistro"_s, u"no tiene los argumentos"_s);
  row(services, u"BloquearControles"_s, u"no desactiva"_s);
  row(services, u"establecercontrolcambioformulario"_s, u"tipos de argumentos"_s);
  row(services, u"controlcambioformulario"_s, u"no ve que un texto ha cambiado"_s);
  row(services, u"SeleccionarTexto"_s, u"texto entero"_s);
  row(services, u"SeleccionarFila"_s, u"fila entera"_s);
  row(services, u"SalvarAnchos"_s, u"falla con el error 75: no se puede escribir"_s);
  row(services, u"CargarAnchos"_s, u"no repone"_s);
  row(services, u"VerError"_s, u"ni el texto ni el número"_s);
  row(services, u"CIF_NIF_Valido"_s, u"no contesta 3 y la letra Z"_s);
  row(services, u"Validar_NIF"_s, u"contesta QString (1) donde el contrato pide un número"_s);
  row(services, u"FormatearAEuros"_s, u"contesta double"_s);
  row(services, u"VerificarEuros"_s, u"deja pasar"_s);
  row(services, u"SeleccionarCP_Provincia"_s, u"falta"_s);
  const QString more = u"Peor.cPrincipal"_s;
  row(more, u"BloqueoRegistro"_s, u"dice que otro tiene el registro y que lo tiene este cuadro"_s);
  row(more, u"controlcambioformulario"_s, u"ve un cambio donde no lo hay"_s);
  row(more, u"CIF_NIF_Valido"_s, u"el argumento 2"_s);
  row(more, u"Validar_NIF"_s, u"no contesta 1"_s);
  row(more, u"VerificarEuros"_s, u"el argumento 1 («int»)"_s);
  const QString forgetful = u"Fina.cPrincipal"_s;
  row(forgetful, u"BloqueoRegistro"_s, u"dice que otro tiene el registro y que lo tiene este cuadro"_s);
  row(forgetful, u"DesbloqueoRegistro"_s, u"sigue viendo el bloqueo después de soltarlo"_s);
  row(forgetful, u"VerError"_s, u"no enseña el error"_s);
  row(forgetful, u"FormatearAEuros"_s, u"da «1,234.50»"_s);
  row(forgetful, u"VerificarEuros"_s, u"no deja pasar «0»"_s);
  const QString forgetfulLists = u"Fina.cListas"_s;
  row(forgetfulLists, u"RellenarComboPais"_s, u"da un registro borrado"_s);
  row(forgetfulLists, u"RellenarComboProvincias"_s, u"lleva su identificador como texto"_s);
  row(forgetfulLists, u"rellenarcombobancos"_s, u"no elige el registro"_s);
  row(forgetfulLists, u"rellenarcombosucursales"_s, u"no da un registro"_s);
  row(forgetfulLists, u"CargarBancoSucursalCaja"_s, u"no da el número"_s);
  row(forgetfulLists, u"CargarBancoSucursalLista"_s, u"no elige el banco"_s);
  const QString personal = u"Propia.cPrincipal"_s;
  row(personal, u"BloqueoRegistro"_s, {});
  row(personal, u"DesbloqueoRegistro"_s, u"sigue viendo el bloqueo después de soltarlo"_s);
  row(personal, u"BloquearControles"_s, u"QAction"_s);
  row(personal, u"controlcambioformulario"_s, u"ve un cambio donde no lo hay (otro objeto"_s);
  row(personal, u"CargarAnchos"_s, u"con esa clave"_s);
  row(personal, u"VerError"_s, u"ni el texto ni el número"_s);
  row(personal, u"Validar_NIF"_s, u"contesta 1 para 12345678A"_s);
  row(personal, u"FormatearAEuros"_s, u"no deja como está"_s);
  const QString careless = u"Vaga.cListas"_s;
  row(careless, u"RellenarComboPais"_s, u"alfabeto español"_s);
  row(careless, u"RellenarComboProvincias"_s, u"aunque no se le pide"_s);
  row(careless, u"rellenarcombobancos"_s, u"currentIndexChanged"_s);
  const QString lists = u"Mala.cListas"_s;
  row(lists, u"RellenarCombo"_s, u"no vacía"_s);
  row(lists, u"RellenarComboPais"_s, u"«uno» no lleva su identificador"_s);
  row(lists, u"RellenarComboProvincias"_s, u"país 0"_s);
  row(lists, u"rellenarcombobancos"_s, u"nadie ha pedido"_s);
  row(lists, u"rellenarcombosucursales"_s, u"falta"_s);
  row(lists, u"LocalizarElementoLista"_s, u"no elige"_s);
  row(lists, u"CargarBancoSucursalCaja"_s, u"pide un texto"_s);
  row(lists, u"CargarBancoSucursalLista"_s, u"texto vacío"_s);
}

void tst_verification::FaultsAreNamed() {
  QFETCH(QString, progId);
  QFETCH(QString, member);
  QFETCH(QString, fault);
  static QMap<QString, QMap<QString, QString>> known;
  if (!known.contains(progId)) {
    const automation::ComponentLibrary library(QStringLiteral(FAULTY_SERVICES));
    const support::TestDatabase database;
    known[progId] =
        Verdicts(*library.CreateObject(progId), *library.CreateObject(progId), progId.endsWith(u"cListas"_s), database);
  }
  const QString said = known[progId].value(member, u"not checked"_s);
  QVERIFY2(fault.isEmpty() ? said.isEmpty() : said.contains(fault), qPrintable(said));
}

void tst_verification::Program_data() {
  QTest::addColumn<QString>("arguments");
  QTest::addColumn<int>("code");
  QTest::addColumn<QString>("said");
  QTest::newRow("services") << QStringLiteral(FAULTY_SERVICES " Mala.cPrincipal") << 1
                            << u"Mala.cPrincipal: 27 miembros, 23 con faltas"_s;
  QTest::newRow("list helper") << QStringLiteral(FAULTY_SERVICES " Mala.cListas") << 1
                               << u"Mala.cListas: 8 miembros, 8 con faltas"_s;
  QTest::newRow("a member that never returns") << QStringLiteral(FAULTY_SERVICES " Quieta.cPrincipal --limite 1") << 1
                                               << u"IDNodo                              no vuelve"_s;
  QTest::newRow("no such class") << QStringLiteral(FAULTY_SERVICES " Otra.cListas") << 1
                                 << u"no contiene la clase «Otra.cListas»"_s;
  QTest::newRow("no library") << u"/no/hay.so Mala.cListas"_s << 1 << u"no existe la biblioteca"_s;
  QTest::newRow("no class") << QStringLiteral(FAULTY_SERVICES) << 2 << u"Faltan la biblioteca o la clase"_s;
}

void tst_verification::Program() {
  QFETCH(QString, arguments);
  QFETCH(int, code);
  QFETCH(QString, said);
  QProcess program;
  program.setProcessChannelMode(QProcess::MergedChannels);
  program.start(QStringLiteral(KEL_HOST), QStringList{u"verificar-servicios"_s} + arguments.split(u' '));
  QVERIFY(program.waitForFinished(60000));
  const QString output = QString::fromUtf8(program.readAll());
  QVERIFY2(output.contains(said), qPrintable(output));
  QCOMPARE(program.exitCode(), code);
}

KEL_TEST(tst_verification);
#include "tst_verification.moc"
