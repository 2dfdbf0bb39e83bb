#include "support/Expect.h"
#include "taxes/WrappedCheckBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// The percentages 40 and 50 of the reference data, by their keys.
constexpr int forty = 2;
constexpr int fifty = 4;

void Fill(const DialogUser& dialog, const QString& purpose) {
  dialog.Choose("cboTipoDonativo_0", u"40"_s);
  dialog.Choose("cboTipoDonativo_1", u"50"_s);
  dialog.Type("txtTipoDonativo_0", purpose);
}

int AddType(const TestHost& host) {
  host.Query(
      u"INSERT INTO TipoDonativos(CodTipoDeduccionFisica,CodTipoDeduccionJuridica,Nombre,TextoRecibo,TipoA,Modelo182,"
      u"GenerarRecibo) VALUES({},{},'Becas','Para becas',0,-1,-1)",
      forty, fifty);
  return host.Id(u"SELECT MAX(IDTipoDonativo) AS N FROM TipoDonativos");
}

}  // namespace

class tst_donation_types : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // An apostrophe between double quotes is stored doubled.
  void Adds_data() {
    QTest::addColumn<int>("requested");
    QTest::addColumn<bool>("boxes");
    QTest::addColumn<QString>("values");
    QTest::addColumn<QString>("stored");
    QTest::newRow("plain") << int(action.Agregar()) << false << uR"((4, 2, "Casa d''Oració", "", -1,False,0))"_s
                           << u"Casa d''Oració||Verdadero|Falso|Falso"_s;
    QTest::newRow("everything, on behalf of another")
        << int(action.Nuevo()) << true << uR"((4, 2, "Casa d''Oració", "L''any", -1,True,-1))"_s
        << u"Casa d''Oració|L''any|Verdadero|Verdadero|Verdadero"_s;
  }
  void Adds() {
    QFETCH(int, requested);
    QFETCH(bool, boxes);
    QFETCH(QString, values);
    QFETCH(QString, stored);
    TestHost host;
    host.driver.On("frmTipoDonativo", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar tipo de donativo"_s);
      QCOMPARE(dialog.Find<QComboBox>("cboTipoDonativo_0")->currentIndex(), -1);
      Fill(dialog, u" Casa d'Oració "_s);
      // Without receipts there is no text to write.
      QVERIFY(!dialog.IsEnabled("txtTipoDonativo_1"));
      QVERIFY(!dialog.Text("lblBloqueo").isEmpty());
      if (boxes) {
        dialog.Press("chkModelo");
        dialog.Press("chkRecibo");
        QVERIFY(dialog.Text("lblBloqueo").isEmpty());
        dialog.Type("txtTipoDonativo_1", u"L'any"_s);
      }
      dialog.Press("cmdTipoDonativo_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), requested, 0, 77));
    const QString fill = u"SELECT IDTipoDeduccion, Porcentaje FROM TipoDeducciones WHERE Eliminado=False"_s;
    QStringList expected{u"OPEN"_s, fill, fill, u"BEGIN"_s,
                         u"INSERT INTO TipoDonativos (CodTipoDeduccionJuridica, CodTipoDeduccionFisica, Nombre, "
                         "TextoRecibo, TipoA, Modelo182, GenerarRecibo) VALUES "_s +
                             values};
    if (requested == action.Nuevo()) {
      expected.append(u"SELECT MAX(IDTipoDonativo) AS IDTipoDonativo FROM TipoDonativos"_s);
    }
    expected.append({u"COMMIT"_s, u"CLOSE"_s});
    QCOMPARE(host.Recording().Log(), expected);
    const int id = host.Id(u"SELECT MAX(IDTipoDonativo) AS N FROM TipoDonativos");
    QCOMPARE(host.Query(u"SELECT Nombre, TextoRecibo, TipoA, Modelo182, GenerarRecibo FROM TipoDonativos WHERE "
                        u"IDTipoDonativo={}",
                        id),
             QStringList(stored));
    QCOMPARE(host.services().property("IDAux").toInt(), requested == action.Nuevo() ? id : 77);
  }

  void ADoubleQuoteBreaksTheInsertAndNothingIsLost() {
    TestHost host;
    host.driver.On("frmTipoDonativo", [](const DialogUser& dialog) {
      Fill(dialog, u"La \"casa\""_s);
      dialog.Press("cmdTipoDonativo_0");
      QCOMPARE(dialog.Text("txtTipoDonativo_0"), u"La \"casa\""_s);
      QCOMPARE(dialog.Text("cboTipoDonativo_1"), u"50"_s);
      dialog.Type("txtTipoDonativo_0", u"La casa"_s);
      dialog.Press("cmdTipoDonativo_0");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Agregar()));
    const QString box = host.driver.Boxes().value(0);
    QVERIFY2(box.endsWith(u"frmTipoDonativo / AgregarTipoDonativo"_s), qPrintable(box));
    QCOMPARE(host.Recording().Log().filter(QRegularExpression(u"^(BEGIN|ROLLBACK|COMMIT)"_s)),
             (QStringList{u"BEGIN"_s, u"ROLLBACK"_s, u"BEGIN"_s, u"COMMIT"_s}));
    QCOMPARE(host.Query(u"SELECT Nombre FROM TipoDonativos"), QStringList(u"La casa"_s));
  }

  void MissingInputIsRefusedInOrder() {
    TestHost host;
    host.driver.On("frmTipoDonativo", [](const DialogUser& dialog) {
      dialog.Press("cmdTipoDonativo_0");
      QCOMPARE(dialog.Focused(), u"cboTipoDonativo_0"_s);
      dialog.Choose("cboTipoDonativo_0", u"40"_s);
      dialog.Press("cmdTipoDonativo_0");
      QCOMPARE(dialog.Focused(), u"cboTipoDonativo_1"_s);
      dialog.Choose("cboTipoDonativo_1", u"50"_s);
      dialog.Type("txtTipoDonativo_0", u" "_s);
      dialog.Press("cmdTipoDonativo_0");
      QCOMPARE(dialog.Focused(), u"txtTipoDonativo_0"_s);
      dialog.Press("cmdTipoDonativo_1");
    });
    for (int i = 0; i < 3; ++i) {
      host.driver.Answer(QMessageBox::Ok);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Agregar()));
    const QString choose = u"Prueba|aviso|¡Debe seleccionar un porcentaje de la lista!"_s;
    QCOMPARE(host.driver.Boxes(),
             (QStringList{choose, choose, u"Prueba|aviso|¡Debe introducir datos en el campo finalidad!"_s}));
    QCOMPARE(host.desktop.beeps, 3);
  }

  void ThePriorityBoxWritesPercentages() {
    TestHost host;
    // 25 and 20 are in the list, 15 and 10 are not.
    host.Query(u"UPDATE TipoDeducciones SET Eliminado=-1 WHERE Porcentaje IN (10,15)");
    host.driver.On("frmTipoDonativo", [](const DialogUser& dialog) {
      const auto* individuals = dialog.Find<QComboBox>("cboTipoDonativo_0");
      const auto* entities = dialog.Find<QComboBox>("cboTipoDonativo_1");
      Fill(dialog, u"Mecenazgo"_s);
      auto* priority = dialog.Find<QCheckBox>("chkTipoDonativo");
      priority->click();
      QCOMPARE(individuals->currentText(), u"25"_s);
      QCOMPARE(entities->currentIndex(), -1);
      QCOMPARE(entities->placeholderText(), u"15"_s);
      dialog.Press("cmdTipoDonativo_0");
      QCOMPARE(dialog.Focused(), u"cboTipoDonativo_1"_s);
      priority->click();
      QCOMPARE(individuals->currentText(), u"20"_s);
      QCOMPARE(entities->currentIndex(), -1);
      QCOMPARE(entities->placeholderText(), u"10"_s);
      dialog.Choose("cboTipoDonativo_1", u"50"_s);
      QCOMPARE(entities->currentText(), u"50"_s);
      dialog.Press("cmdTipoDonativo_0");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Agregar()));
    QCOMPARE(host.Query(u"SELECT Porcentaje, CodTipoDeduccionJuridica FROM TipoDonativos INNER JOIN TipoDeducciones ON "
                        u"CodTipoDeduccionFisica=IDTipoDeduccion"),
             QStringList(u"20|4"_s));
  }

  void TheReceiptTextOfAllDonations_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("donation");
    QTest::newRow("unchanged: no question") << u"Para becas"_s << 0 << u"Antiguo"_s;
    QTest::newRow("no") << u"L'any"_s << int(QMessageBox::No) << u"Antiguo"_s;
    QTest::newRow("yes") << u"L'any"_s << int(QMessageBox::Yes) << u"L'any"_s;
  }
  void TheReceiptTextOfAllDonations() {
    QFETCH(QString, typed);
    QFETCH(int, answer);
    QFETCH(QString, donation);
    TestHost host;
    const int id = AddType(host);
    host.Query(u"INSERT INTO Donativos(CodTipoDonativo,TextoRecibo) VALUES({},'Antiguo')", id);
    host.Query(u"INSERT INTO Donativos(CodTipoDonativo,TextoRecibo) VALUES({},'De otro')", id + 1);
    host.driver.On("frmTipoDonativo", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades del tipo de donativo"_s);
      QCOMPARE(dialog.Text("cboTipoDonativo_0"), u"40"_s);
      QCOMPARE(dialog.Text("cboTipoDonativo_1"), u"50"_s);
      QVERIFY(dialog.Find<QCheckBox>("chkModelo")->isChecked());
      QVERIFY(dialog.IsEnabled("txtTipoDonativo_1"));
      dialog.Type("txtTipoDonativo_1", typed);
      dialog.Press("cmdTipoDonativo_0");
    });
    if (answer != 0) {
      host.driver.Answer(answer);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Modificar(), id));
    QCOMPARE(host.driver.Boxes(),
             answer == 0 ? QStringList()
                         : QStringList(u"Prueba|ninguno|Ha cambiado el texto del recibo. ¿Desea cambiarlo a todos los "
                                       "donativos existentes?"_s));
    QVERIFY(host.Recording().Log().contains(
        u"UPDATE TipoDonativos SET CodTipoDeduccionJuridica = 4, CodTipoDeduccionFisica = 2, Nombre = 'Becas', "
        "TextoRecibo = '%1', TipoA = -1, Modelo182= True, GenerarRecibo =-1 WHERE IDTipoDonativo = %2"_s
            .arg(typed.replace(u'\'', u"''"_s))
            .arg(id)));
    QCOMPARE(host.Query(u"SELECT TextoRecibo FROM Donativos ORDER BY IDDonativo"),
             (QStringList{donation, u"De otro"_s}));
  }

  void AFailureOverAllDonationsLeavesEverythingAsItWas() {
    TestHost host;
    const int id = AddType(host);
    host.Recording().FailAt(u"UPDATE Donativos"_s);
    host.driver.On("frmTipoDonativo", [](const DialogUser& dialog) {
      dialog.Type("txtTipoDonativo_1", u"Nuevo"_s);
      dialog.Press("cmdTipoDonativo_0");
      QCOMPARE(dialog.Text("txtTipoDonativo_1"), u"Nuevo"_s);
      dialog.Press("cmdTipoDonativo_1");
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Modificar(), id));
    QVERIFY(host.driver.Boxes().value(1).endsWith(u"frmTipoDonativo / ModificarTipoDonativoBD"_s));
    QCOMPARE(host.Query(u"SELECT TextoRecibo FROM TipoDonativos"), QStringList(u"Para becas"_s));
    QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
  }

  void ADeductionThatWasDeletedIsAskedFor() {
    TestHost host;
    const int id = AddType(host);
    host.Query(u"UPDATE TipoDeducciones SET Eliminado=-1 WHERE IDTipoDeduccion={}", fifty);
    host.driver.On("frmTipoDonativo", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("cboTipoDonativo_0"), u"40"_s);
      QCOMPARE(dialog.Find<QComboBox>("cboTipoDonativo_1")->currentIndex(), -1);
      dialog.Press("cmdTipoDonativo_0");
      dialog.Press("cmdTipoDonativo_1");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Modificar(), id));
  }

  void OnlyAdministratorsAddPercentages_data() {
    QTest::addColumn<int>("kind");
    QTest::newRow("administrator") << 1;
    QTest::newRow("another") << 2;
  }
  void OnlyAdministratorsAddPercentages() {
    QFETCH(int, kind);
    TestHost host;
    host.session.userKind = kind;
    host.driver.On("frmTipoDonativo", [kind](const DialogUser& dialog) {
      QCOMPARE(dialog.IsEnabled("cmdAgregar_0"), kind == 1);
      QCOMPARE(dialog.IsEnabled("cmdAgregar_1"), kind == 1);
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Agregar()));
  }

  void ALongCaptionTakesTheLinesThatItNeeds() {
    taxes::WrappedCheckBox box;
    const int line = box.heightForWidth(100);
    box.setText(u"unas palabras "_s.repeated(8));
    const int small = box.heightForWidth(100);
    QVERIFY(small > 3 * line && box.heightForWidth(1000) < small);
    QFont font = box.font();
    font.setPointSize(2 * font.pointSize());
    box.setFont(font);
    QVERIFY(box.heightForWidth(100) > small);
  }

  void AFailedLoadIsToldUnderItsName() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Modificar(), 999));
    QVERIFY(host.driver.Boxes().value(0).endsWith(u"frmTipoDonativo / Form_Load()"_s));
  }
};

KEL_TEST(tst_donation_types);
#include "tst_donation_types.moc"
