#include "support/Expect.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QThread>

using namespace framework;
using namespace Qt::StringLiterals;

using automation::Error;
using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// A desktop whose next beep fails: every refusal of a check begins with one.
class FailingDesktop : public support::CountingDesktop {
 public:
  void Beep() override {
    if (std::exchange(m_fails, false)) {
      throw Error(440, u"sin sonido"_s);
    }
  }

 private:
  bool m_fails = true;
};

}  // namespace

class tst_accept : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // An error of the checks is told under the procedure of Accept, and the dialog stays with what was typed.
  void AnErrorOfAChecksRefusal_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QByteArray>("accept");
    QTest::addColumn<QString>("procedure");
    const auto row = [](int number, const char* dialog, const char* box, const char* accept, const char* procedure) {
      QTest::newRow(dialog) << number << QString::fromUtf8(dialog) << QByteArray(box) << QByteArray(accept)
                            << QString::fromUtf8(procedure);
    };
    row(node.ComunidadAutonoma(), "frmComunidadAutonoma", "txtComunidad", "cmdAceptar", "cmdAceptar_Click");
    row(node.DeduccionesComunidad(), "frmDeduccionComunidad", "", "cmdAceptar", "cmdAceptar_Click");
    row(node.TipoDeduccion(), "frmTipoDeduccion", "", "cmdDeduccion_0", "cmdDeduccion_Click(");
    row(node.TipoDonativos(), "frmTipoDonativo", "txtTipoDonativo_0", "cmdTipoDonativo_0", "cmdTipoDonativo_click(");
    row(node.Publicaciones(), "frmPublicacion", "txtPublicacion", "cmdPublicacion_0", "cmdPublicacion_Click (0)");
    row(node.Cabeceras(), "frmCabecera", "txtLinea_0", "cmdBotonera_0", "cmdBotonera_Click");
  }
  void AnErrorOfAChecksRefusal() {
    QFETCH(int, number);
    QFETCH(QString, dialog);
    QFETCH(QByteArray, box);
    QFETCH(QByteArray, accept);
    QFETCH(QString, procedure);
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    host.driver.On(qPrintable(dialog), [&](const DialogUser& user) {
      if (!box.isEmpty()) {
        user.Type(box, u"12"_s);
      }
      const FailingDesktop failing;
      user.Press(accept);
      const QStringList boxes = host.driver.TakeBoxes();
      QVERIFY2(boxes.join(u' ').contains(u"/ %1 / %2"_s.arg(dialog, procedure)), qPrintable(boxes.join(u' ')));
      QVERIFY(user.Dialog()->isVisible());
      QVERIFY(box.isEmpty() || user.Text(box) == u"12"_s);
      Desktop::Install(&host.desktop);
      user.Dialog()
          ->findChild<QAbstractButton*>(
              QString::fromUtf8(accept).replace(u"_0"_s, u"_1"_s).replace(u"cmdAceptar"_s, u"cmdCancelar"_s))
          ->click();
    });
    EXPECT_CLEAN(host, host.PasarDatos(number, action.Agregar()));
  }

  // A call from another thread could never return; it fails before the host is asked for anything.
  void OnlyTheInterfaceThreadMayCall() {
    TestHost host;
    std::optional<Error> outcome;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { outcome = host.PasarDatos(node.Paises(), action.Agregar()); }));
    thread->start();
    QVERIFY(thread->wait(5000));
    QVERIFY(outcome.has_value());
    QCOMPARE(outcome->Number(), 440);
    QVERIFY(outcome->Description().contains(u"hilo"_s));
    QCOMPARE(host.Recording().State(), adodb::StateClosed);
  }
};

KEL_TEST(tst_accept);
#include "tst_accept.moc"
