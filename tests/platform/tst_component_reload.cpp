#include "platform/adodb/Connection.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"
#include "support/Driver.h"
#include "support/TestProgram.h"

#include <QLibrary>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using automation::Call;
using automation::Error;
using support::DialogUser;

namespace {

const QString componentFile = QStringLiteral(COMPONENT);

// One row of one column, whatever was asked.
class OneRow : public adodb::Recordset {
 public:
  int State() const override { return adodb::StateOpen; }
  bool AtEnd() const override { return m_atEnd; }
  void MoveNext() override { m_atEnd = true; }
  QVariant Field(QStringView /*name*/) override { return u"España"_s; }
  QVariant Field(int /*position*/) override { return u"España"_s; }
  int FieldCount() const override { return 1; }
  QString FieldName(int /*position*/) const override { return u"Nombre"_s; }
  void Close() override {}

 private:
  bool m_atEnd = false;
};

class OwnConnection : public adodb::Connection {
 public:
  int State() const override { return m_state; }
  void Open() override { m_state = adodb::StateOpen; }
  void Open(const QString& /*connectionString*/, const QString& /*user*/, const QString& /*password*/,
            int /*options*/) override {
    Open();
  }
  void Close() override { m_state = adodb::StateClosed; }
  std::unique_ptr<adodb::Recordset> Execute(const QString& /*statement*/) override {
    return std::make_unique<OneRow>();
  }
  qint64 RecordsAffected() const override { return 0; }
  void BeginTrans() override {}
  void CommitTrans() override {}
  void RollbackTrans() override {}

 private:
  int m_state = adodb::StateClosed;
};

// What the component handed over, as a host keeps it.
QStringList keptTexts;
QVariantList keptValues;

// A host's own services class.
class OwnServices : public QObject {
  Q_OBJECT
  Q_PROPERTY(int IDNodo MEMBER node)
  Q_PROPERTY(int Accion MEMBER action)
  Q_PROPERTY(int IDSeleccionado MEMBER selected)
  Q_PROPERTY(QVariant IDAux MEMBER aux)
  Q_PROPERTY(adodb::Connection* congestion MEMBER connection)
  Q_PROPERTY(QString tituloaplicacion MEMBER text)
  Q_PROPERTY(QString Icono MEMBER text)
  Q_PROPERTY(QString strFichAyuda MEMBER text)

 public:
  Q_INVOKABLE bool BloqueoRegistro(QObject*& request, const QString& form, const QString& column, int /*key*/,
                                   bool& held) {
    keptTexts << QString::fromLatin1(request->metaObject()->className()) << form << column;
    held = true;
    return false;
  }
  Q_INVOKABLE void DesbloqueoRegistro(const QVariant& /*request*/, const QVariant& form, const QVariant& column,
                                      const QVariant& key) {
    keptValues << form << column << key;
  }
  Q_INVOKABLE void establecercontrolcambioformulario(const QObjectList& controls) {
    keptTexts << QString::fromLatin1(controls.isEmpty() ? "nothing" : "controls");
  }
  Q_INVOKABLE bool controlcambioformulario(const QVariant& controls) {
    keptValues << controls;
    return false;
  }
  Q_INVOKABLE void SeleccionarTexto(QObject* /*control*/) {}

  int node = 0;
  int action = 0;
  int selected = 0;
  QVariant aux;
  adodb::Connection* connection = nullptr;
  QString text;
};

}  // namespace

// The component loaded, used and unloaded again and again by a host that shares nothing with it but the platform.
class tst_component_reload : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    qputenv("KEL_CLASES", m_folder.filePath(u"clases.ini"_s).toUtf8());
    automation::RegisterClass(u"KelAPI.cPrincipal"_s, [] { return std::make_unique<OwnServices>(); });
    QVERIFY(automation::ComponentLibrary(componentFile).Register());
  }

  void FactoriesAreRefusedWithANumber() {
    using automation::ClassFactory;
    const auto getClassObject =
        reinterpret_cast<automation::DllGetClassObjectFunction>(QLibrary::resolve(componentFile, "DllGetClassObject"));
    QVERIFY(getClassObject != nullptr);
    QCOMPARE(getClassObject("KelConfiguracion.CPrincipal", nullptr), int(automation::LibraryNoPlace));
    for (const char* progId : {static_cast<const char*>(nullptr), "KelConfiguracion.NoHay"}) {
      ClassFactory* factory = reinterpret_cast<ClassFactory*>(this);
      QCOMPARE(getClassObject(progId, &factory), int(automation::LibraryClassNotAvailable));
      QCOMPARE(factory, nullptr);
    }
  }

  void KeptValuesOutliveTheLibrary() {
    for (int round = 1; round <= 3; ++round) {
      keptTexts.clear();
      keptValues.clear();
      OpenConnectionAndNothingElse();
      ModifyCountry();
      const Error refused = PasarDatosOfAnEmptyHost();
      QCOMPARE(automation::UnloadUnusedLibraries(), 1);
      QCOMPARE(keptTexts.join(u' '), u"OwnServices frmPais IDPais controls"_s);
      QCOMPARE(keptValues.size(), 4);
      QVERIFY(!keptValues[0].value<QObjectList>().isEmpty());
      QCOMPARE(keptValues.mid(1), (QVariantList{u"frmPais"_s, u"IDPais"_s, 35}));
      QCOMPARE(refused.Description(), u"El objeto no admite esta propiedad o método (QObject.strFichAyuda)"_s);
    }
  }

 private:
  static std::unique_ptr<QObject> Component() { return automation::CreateObject(u"KelConfiguracion.CPrincipal"_s); }

  // A node that has no dialog.
  void OpenConnectionAndNothingElse() {
    OwnServices services;
    services.node = 999;
    services.connection = &m_connection;
    const auto component = Component();
    Call(component.get(), "AbrirConexion", services.connection);
    QCOMPARE(m_connection.State(), int(adodb::StateOpen));
    Call(component.get(), "PasarDatos", &services);
    QCOMPARE(m_connection.State(), int(adodb::StateClosed));
  }

  void ModifyCountry() {
    OwnServices services;
    services.node = cConstNodo().Paises();
    services.action = cConstAccion().Modificar();
    services.selected = 35;
    services.connection = &m_connection;
    support::Driver driver;
    driver.On("frmPais", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("txtPais"), u"España"_s);
      dialog.Close();
    });
    Call(Component().get(), "PasarDatos", &services);
    QCOMPARE(driver.TakeProblems(), QStringList());
    QCOMPARE(driver.TakeBoxes(), QStringList());
  }

  static Error PasarDatosOfAnEmptyHost() {
    QObject host;
    try {
      Call(Component().get(), "PasarDatos", &host);
    } catch (const Error& error) {
      return error;
    }
    return Error(0);
  }

  QTemporaryDir m_folder;
  OwnConnection m_connection;
};

KEL_TEST(tst_component_reload);
#include "tst_component_reload.moc"
