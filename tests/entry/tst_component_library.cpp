#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace automation;

namespace {

QStringList ProgIds(const QString& registryFile) {
  QFile file(registryFile);
  QStringList progIds;
  if (file.open(QIODevice::ReadOnly)) {
    while (!file.atEnd()) {
      progIds.append(QString::fromUtf8(file.readLine()).section(u'=', 0, 0));
    }
  }
  return progIds;
}

// A class's own properties, in their order.
QString PropertiesOf(const QObject& object) {
  QStringList properties;
  const QMetaObject* metaObject = object.metaObject();
  for (int i = metaObject->propertyOffset(); i < metaObject->propertyCount(); ++i) {
    properties.append(QString::fromLatin1(metaObject->property(i).name()));
  }
  return properties.join(u' ');
}

}  // namespace

// The shared library itself, as any host finds it: registered in the class registry file, created by name.
class tst_component_library : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    qputenv("KEL_CLASES", m_folder.filePath(u"clases.ini"_s).toUtf8());
    QVERIFY(ComponentLibrary(QStringLiteral(COMPONENT)).Register());
  }

  // The registry file that packages install knows the classes that the library registers by itself.
  void PackagesKnowEveryClass() { QCOMPARE(ProgIds(QStringLiteral(INSTALLED_REGISTRY)), ProgIds(RegistryFile())); }

  void PublishedMembersInOrder() {
    const auto principal = CreateObject(u"KELCONFIGURACION.cprincipal"_s);
    const QMetaObject* metaObject = principal->metaObject();
    QStringList methods;
    for (int i = metaObject->methodOffset(); i < metaObject->methodCount(); ++i) {
      methods.append(QString::fromLatin1(metaObject->method(i).methodSignature()));
    }
    QCOMPARE(methods.join(u' '),
             u"PasarDatos(QObject*) AbrirConexion(adodb::Connection*) "
             "EliminarRegistro(QObject*)"_s);
    QCOMPARE(Get(principal.get(), "versioncontrato").toString(), u"1.0"_s);

    const auto sucursal = CreateObject(u"KelConfiguracion.cSucursal"_s);
    QCOMPARE(PropertiesOf(*sucursal),
             u"ExisteEnBD Estado IDSucursal IDProvincia IDPais Nombre Codigo "
             "Direccion Poblacion CodigoPostal Provincia Pais"_s);
    Put(sucursal.get(), "codigo", u"0049"_s);
    Put(sucursal.get(), "estado", u"3"_s);
    QCOMPARE(Get(sucursal.get(), "Codigo").toString(), u"0049"_s);
    QCOMPARE(Get(sucursal.get(), "Estado").toInt(), 3);

    const auto campo = CreateObject(u"KelConfiguracion.cCampo"_s);
    QCOMPARE(PropertiesOf(*campo), u"codTabla IDElemento IDCampo Campo Linea Orden UsarCampo ExisteEnBD Estado"_s);
    Put(campo.get(), "linea", u"3"_s);
    QCOMPARE(Get(campo.get(), "Linea").toInt(), 3);
    QVERIFY_THROWS_EXCEPTION(Error, Put(campo.get(), "Orden", 256));
  }

  // A host that lacks what the component asks for gets an error of its own call.
  void HostWithoutAMember() {
    const auto principal = CreateObject(u"KelConfiguracion.CPrincipal"_s);
    QObject emptyHost;
    for (const char* method : {"PasarDatos", "EliminarRegistro"}) {
      try {
        Call(principal.get(), method, &emptyHost);
        QFAIL("no error");
      } catch (const Error& error) {
        QCOMPARE(error.Number(), 438);
      }
    }
    // An error names the class as it is published.
    try {
      Get(principal.get(), "NoHay");
      QFAIL("no error");
    } catch (const Error& error) {
      QVERIFY2(error.Description().endsWith(u"(CPrincipal.NoHay)"_s), qPrintable(error.Description()));
    }
    QVERIFY_THROWS_EXCEPTION(Error, Call(principal.get(), "PasarDatos", QVariant()));
    QVERIFY_THROWS_EXCEPTION(Error, Call(principal.get(), "AbrirConexion", QVariant()));
  }

  // Two copies in one process are two components, each with a request of its own.
  void TwoCopiesServeSideBySide() {
    const QString copy = m_folder.filePath(u"libOtra.so"_s);
    QVERIFY(QFile::copy(QStringLiteral(COMPONENT), copy));
    QObject emptyHost;
    for (const QString& path : {copy, QStringLiteral(COMPONENT), copy}) {
      const ComponentLibrary library(path);
      const auto principal = library.CreateObject(u"KelConfiguracion.CPrincipal"_s);
      QVERIFY_THROWS_EXCEPTION(Error, Call(principal.get(), "PasarDatos", &emptyHost));
      QVERIFY(!library.CanUnloadNow());
    }
    QVERIFY(ComponentLibrary(copy).CanUnloadNow());
  }

  void UnloadsOnlyWhenNothingIsAlive() {
    auto object = CreateObject(u"KelConfiguracion.cSucursal"_s);
    QCOMPARE(UnloadUnusedLibraries(), 0);
    object.reset();
    QCOMPARE(UnloadUnusedLibraries(), 1);
    // It comes back when it is asked for again.
    object = CreateObject(u"KelConfiguracion.cSucursal"_s);
    Put(object.get(), "Nombre", u"Centro"_s);
    QCOMPARE(Get(object.get(), "NOMBRE").toString(), u"Centro"_s);
    const ComponentLibrary library(QStringLiteral(COMPONENT));
    QVERIFY(!library.CanUnloadNow());
    QVERIFY_THROWS_EXCEPTION(Error, library.CreateObject(u"KelConfiguracion.NoHay"_s));
  }

  void Unregisters() {
    QVERIFY(ComponentLibrary(QStringLiteral(COMPONENT)).Unregister());
    QVERIFY_THROWS_EXCEPTION(Error, CreateObject(u"KelConfiguracion.CPrincipal"_s));
    QFile file(RegistryFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray());
  }

 private:
  QTemporaryDir m_folder;
};

KEL_TEST(tst_component_library);
#include "tst_component_library.moc"
