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

using namespace automation;

// The shared library itself, as any host finds it: registered in the class registry file, created by name.
class tst_component_library : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    qputenv("KEL_CLASES", m_folder.filePath(QStringLiteral("clases.ini")).toUtf8());
    QVERIFY(ComponentLibrary(QStringLiteral(COMPONENT)).Register());
  }

  void PublishedMembersInOrder() {
    const auto principal = CreateObject(QStringLiteral("KELCONFIGURACION.cprincipal"));
    const QMetaObject* metaObject = principal->metaObject();
    QStringList methods;
    for (int i = metaObject->methodOffset(); i < metaObject->methodCount(); ++i) {
      methods.append(QString::fromLatin1(metaObject->method(i).methodSignature()));
    }
    QCOMPARE(methods.join(u' '), QStringLiteral("PasarDatos(QObject*) AbrirConexion(adodb::Connection*) "
                                                "EliminarRegistro(QObject*)"));

    const auto sucursal = CreateObject(QStringLiteral("KelConfiguracion.cSucursal"));
    QStringList properties;
    metaObject = sucursal->metaObject();
    for (int i = metaObject->propertyOffset(); i < metaObject->propertyCount(); ++i) {
      properties.append(QString::fromLatin1(metaObject->property(i).name()));
    }
    QCOMPARE(properties.join(u' '), QStringLiteral("ExisteEnBD Estado IDSucursal IDProvincia IDPais Nombre Codigo "
                                                   "Direccion Poblacion CodigoPostal Provincia Pais"));
    Put(sucursal.get(), "codigo", QStringLiteral("0049"));
    Put(sucursal.get(), "estado", QStringLiteral("3"));
    QCOMPARE(Get(sucursal.get(), "Codigo").toString(), QStringLiteral("0049"));
    QCOMPARE(Get(sucursal.get(), "Estado").toInt(), 3);
  }

  // A host that lacks what the component asks for gets an error of its own call.
  void HostWithoutAMember() {
    const auto principal = CreateObject(QStringLiteral("KelConfiguracion.CPrincipal"));
    QObject emptyHost;
    for (const char* method : {"PasarDatos", "EliminarRegistro"}) {
      try {
        Call(principal.get(), method, &emptyHost);
        QFAIL("no error");
      } catch (const Error& error) {
        QCOMPARE(error.Number(), 438);
      }
    }
    QVERIFY_THROWS_EXCEPTION(Error, Call(principal.get(), "PasarDatos", QVariant()));
    QVERIFY_THROWS_EXCEPTION(Error, Call(principal.get(), "AbrirConexion", QVariant()));
  }

  void UnloadsOnlyWhenNothingIsAlive() {
    auto object = CreateObject(QStringLiteral("KelConfiguracion.cSucursal"));
    QCOMPARE(UnloadUnusedLibraries(), 0);
    object.reset();
    QCOMPARE(UnloadUnusedLibraries(), 1);
    // It comes back when it is asked for again.
    object = CreateObject(QStringLiteral("KelConfiguracion.cSucursal"));
    Put(object.get(), "Nombre", QStringLiteral("Centro"));
    QCOMPARE(Get(object.get(), "NOMBRE").toString(), QStringLiteral("Centro"));
    const ComponentLibrary library(QStringLiteral(COMPONENT));
    QVERIFY(!library.CanUnloadNow());
    QVERIFY_THROWS_EXCEPTION(Error, library.CreateObject(QStringLiteral("KelConfiguracion.NoHay")));
  }

  void Unregisters() {
    QVERIFY(ComponentLibrary(QStringLiteral(COMPONENT)).Unregister());
    QVERIFY_THROWS_EXCEPTION(Error, CreateObject(QStringLiteral("KelConfiguracion.CPrincipal")));
    QFile file(RegistryFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray());
  }

 private:
  QTemporaryDir m_folder;
};

KEL_TEST(tst_component_library);
#include "tst_component_library.moc"
