#include "remittances/NationalIdentity.h"
#include "remittances/Office.h"

#include "platform/automation/ClassRegistry.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

constexpr const char* nif = "txtCobrador_3";

// A fresh services object that keeps what it is told of errors, and fails where a test wants it to.
class Witness : public host::cPrincipal {
  Q_OBJECT

 public:
  using cPrincipal::cPrincipal;

  Q_INVOKABLE void VerError(const QString& procedure, const QString& entity, const QString& component) {
    told.append(QStringList{procedure, entity, component}.join(u'|'));
  }
  Q_INVOKABLE QVariant Validar_NIF(const QString& text) {
    checked.append(text);
    if (failing == u"ValidarNIF"_s) {
      throw automation::Error(1234, u"propio"_s);
    }
    return cPrincipal::Validar_NIF(text);
  }
  Q_INVOKABLE void SeleccionarTexto(QObject* control) {
    if (failing == u"SeleccionarTexto"_s) {
      throw automation::Error(1234, u"propio"_s);
    }
    cPrincipal::SeleccionarTexto(control);
  }

  inline static QStringList told;
  inline static QStringList checked;
  inline static QString failing;
};

int MakeCollector(const TestHost& host) {
  host.Query(
      u"INSERT INTO Cobradores(Nombre,Apellido1,NIF,Direccion) VALUES('Ana','Ruiz','12345678z','Calle Mayor, 1')");
  return host.Id(u"SELECT MAX(IDCobrador) FROM Cobradores");
}

QString Boxes(const DialogUser& dialog) {
  QStringList texts;
  for (const char* box :
       {"txtCobrador_0", "txtCobrador_1", "txtCobrador_2", "txtCobrador_3", "txtCobrador_4", "txtCobrador_5"}) {
    texts.append(dialog.Text(box));
  }
  return texts.join(u'|');
}

}  // namespace

class tst_collectors : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    Witness::told.clear();
    Witness::checked.clear();
    Witness::failing.clear();
  }

  void ClosingNeverAsks() {
    TestHost host;
    const int id = MakeCollector(host);
    for (const bool cancels : {false, true}) {
      host.driver.On("frmCobrador", [cancels](const DialogUser& dialog) {
        dialog.Type("txtCobrador_0", u"Otra"_s);
        cancels ? dialog.Press("cmdCobrador_1") : dialog.Close();
      });
      EXPECT_CLEAN(host, host.PasarDatos(node.Cobradores(), action.Modificar(), id, 77));
      QCOMPARE(host.driver.Boxes(), QStringList());
      QCOMPARE(host.Query(u"SELECT Nombre FROM Cobradores"), QStringList(u"Ana"_s));
      QCOMPARE(Requested(host, "IDAux"), 77);
    }
  }

  void AnotherActionShowsAnEmptyDialog() {
    TestHost host;
    const int id = MakeCollector(host);
    for (const int other : {int(action.Nuevo()), int(action.Eliminar())}) {
      host.driver.Answer(QMessageBox::Ok);
      host.driver.On("frmCobrador", [](const DialogUser& dialog) {
        QCOMPARE(dialog.Text(""), u"Colectoras"_s);
        QCOMPARE(Boxes(dialog), u"|||||"_s);
        dialog.Type("txtCobrador_0", u"Ana"_s);
        dialog.Press("cmdCobrador_0");
      });
      EXPECT_CLEAN(host, host.PasarDatos(node.Cobradores(), other, id, 77));
      QCOMPARE(host.Recording().Writes(), QStringList());
      QCOMPARE(Requested(host, "IDAux"), 77);
    }
    QCOMPARE(host.desktop.beeps, 2);
    QCOMPARE(host.driver.Boxes(),
             QStringList(2, u"Prueba|critico|No se han especificado alguno de los parámetros requeridos"_s));
  }

  void TheNifBox_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("letter");
    QTest::addColumn<int>("beeps");
    QTest::newRow("complete") << u"12345678Z"_s << u"12345678Z"_s << QString() << 0;
    QTest::newRow("small letters") << u"x1234567l"_s << u"X1234567L"_s << QString() << 0;
    QTest::newRow("eight digits") << u"12345678"_s << u"12345678"_s << u"Añadir la &letra Z"_s << 0;
    QTest::newRow("fewer digits") << u"1234567"_s << u"01234567"_s << u"Añadir la &letra L"_s << 0;
    QTest::newRow("nine digits") << u"123456789"_s << u"123456789"_s << QString() << 0;
    QTest::newRow("letters stay") << u"abc"_s << u"ABC"_s << QString() << 0;
    QTest::newRow("empty") << QString() << QString() << QString() << 0;
    QTest::newRow("marks") << u"12-34.ñ"_s << u"00001234"_s << u"Añadir la &letra S"_s << 3;
    QTest::newRow("backspace") << u"99\b\bX1"_s << u"X1"_s << QString() << 0;
  }
  void TheNifBox() {
    QFETCH(QString, typed);
    QFETCH(QString, left);
    QFETCH(QString, letter);
    TestHost host;
    host.driver.On("frmCobrador", [&](const DialogUser& dialog) {
      dialog.Find(nif)->setFocus(Qt::TabFocusReason);
      for (const QChar key : typed) {
        key == u'\b' ? dialog.Key(Qt::Key_Backspace) : dialog.Keys(nif, key);
      }
      QTEST(host.desktop.beeps, "beeps");
      QVERIFY(!dialog.IsVisible("cmdLetra"));
      dialog.Find("txtCobrador_4")->setFocus(Qt::TabFocusReason);
      QCOMPARE(dialog.Text(nif), left);
      QCOMPARE(dialog.IsVisible("cmdLetra"), !letter.isEmpty());
      if (!letter.isEmpty()) {
        QCOMPARE(dialog.Text("cmdLetra"), letter);
        QVERIFY(dialog.Find("cmdLetra")->width() >= dialog.Find("cmdLetra")->sizeHint().width());
        dialog.Press("cmdLetra");
        QCOMPARE(dialog.Text(nif), left + letter.last(1));
        QVERIFY(!dialog.IsVisible("cmdLetra"));
      }
      // Selected whole on entering, so that the next key replaces it.
      dialog.Find("txtCobrador_4")->setFocus(Qt::TabFocusReason);
      dialog.Find(nif)->setFocus(Qt::TabFocusReason);
      dialog.Keys(nif, u"7"_s);
      QCOMPARE(dialog.Text(nif), u"7"_s);
      dialog.Press("cmdCobrador_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Cobradores(), action.Agregar()));
  }

  void CheckLettersOfPublishedNumbers() {
    QCOMPARE(remittances::NationalIdentityLetter(u"54362315"_s), u'K');
    QCOMPARE(remittances::NationalIdentityLetter(u"00000000"_s), u'T');
    QCOMPARE(remittances::NationalIdentityLetter(u"99999999"_s), u'R');
    QVERIFY(remittances::NationalIdentityLetter(u"1234567"_s).isNull());
    QVERIFY(remittances::NationalIdentityLetter(u"X1234567"_s).isNull());
  }

  // Under the procedure's own name, through a services object of its own; the dialog stays open.
  void ErrorsOfEachProcedure_data() {
    QTest::addColumn<QString>("procedure");
    QTest::addColumn<QString>("statement");
    QTest::newRow("load") << u"CargarDatos"_s << u"SELECT"_s;
    QTest::newRow("write") << u"ActualizarDatos"_s << u"UPDATE"_s;
    QTest::newRow("check") << u"ValidarNIF"_s << QString();
    QTest::newRow("focus") << u"SeleccionarTexto"_s << QString();
  }
  void ErrorsOfEachProcedure() {
    QFETCH(QString, procedure);
    QFETCH(QString, statement);
    TestHost host;
    const int id = MakeCollector(host);
    automation::RegisterClass(u"KelAPI.cPrincipal"_s, [&] { return std::make_unique<Witness>(host.session); });
    bool failed = statement.isEmpty();
    host.Recording().SetHook([&](const QString& text) {
      if (!failed && text.startsWith(statement)) {
        failed = true;
        throw automation::Error(-2147467259, u"sin conexión"_s);
      }
    });
    host.driver.On("frmCobrador", [&](const DialogUser& dialog) {
      QCOMPARE(Boxes(dialog), procedure == u"CargarDatos"_s ? u"|||||"_s : u"Ana|Ruiz||12345678z|Calle Mayor, 1|"_s);
      Witness::failing = procedure;
      if (procedure == u"ValidarNIF"_s) {
        host.driver.Answer(QMessageBox::Ok);
      }
      dialog.Type("txtCobrador_0", u"Eva"_s);
      dialog.Find("txtCobrador_5")->setFocus(Qt::TabFocusReason);
      if (procedure != u"CargarDatos"_s) {
        dialog.Press("cmdCobrador_0");
      }
      Witness::failing.clear();
      if (dialog.Dialog()->isVisible()) {
        dialog.Press("cmdCobrador_0");
      }
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Cobradores(), action.Modificar(), id));
    QVERIFY(!Witness::told.isEmpty());
    QCOMPARE(Witness::told.filter(procedure + u"|frmCobrador|KelConfiguracion"_s), Witness::told);
    QCOMPARE(host.Query(u"SELECT Nombre FROM Cobradores"), QStringList(u"Eva"_s));
  }
};

KEL_TEST(tst_collectors);
#include "tst_collectors.moc"
