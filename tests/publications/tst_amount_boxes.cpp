#include "support/Expect.h"

#include "platform/automation/ClassRegistry.h"

#include <QLineEdit>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// A host with its own ideas about amounts: x becomes 9, 0 is refused, everything else is as it is.
class OtherHost : public host::cPrincipal {
  Q_OBJECT

 public:
  using cPrincipal::cPrincipal;

  Q_INVOKABLE void VerificarEuros(int& tecla, const QVariant& caja, int inicio, int longitud) {
    asked.append(u"%1 %2 %3 %4"_s.arg(tecla).arg(caja.value<QObject*>()->objectName()).arg(inicio).arg(longitud));
    tecla = tecla == u'x' ? u'9' : tecla == u'0' ? 0 : tecla;
  }
  Q_INVOKABLE QString FormatearAEuros(const QVariant& importe) { return u"<"_s + importe.toString() + u">"_s; }

  static inline QStringList asked;
};

}  // namespace

class tst_amount_boxes : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TypedAndPasted_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("inTheBox");
    QTest::addColumn<QString>("afterLeaving");
    QTest::newRow("comma") << u"1234,5"_s << QString() << u"1234,5"_s << u"1.234,50"_s;
    QTest::newRow("point of the keypad") << u"6.5"_s << QString() << u"6,5"_s << u"6,50"_s;
    QTest::newRow("letters, second comma") << u"1a,2,5-"_s << QString() << u"1,25"_s << u"1,25"_s;
    QTest::newRow("pasted with points") << QString() << u"1.234,50"_s << u"1.234,50"_s << u"1.234,50"_s;
    QTest::newRow("pasted from a text") << QString() << u"Total: 12,5 €."_s << QString() << QString();
    QTest::newRow("pasted with the sign") << QString() << u"12,5 €"_s << u"12,5 €"_s << u"12,50"_s;
    QTest::newRow("pasted letters") << QString() << u"gratis"_s << QString() << QString();
  }
  void TypedAndPasted() {
    QFETCH(QString, typed);
    QFETCH(QString, pasted);
    QFETCH(QString, inTheBox);
    QFETCH(QString, afterLeaving);
    TestHost host;
    host.driver.On("frmPublicacion", [&](const DialogUser& dialog) {
      if (pasted.isEmpty()) {
        dialog.Type("txtPrecioExt", typed);
      } else {
        dialog.Paste("txtPrecioExt", pasted);
      }
      QCOMPARE(dialog.Text("txtPrecioExt"), inTheBox);
      dialog.Find("txtPublicacion")->setFocus(Qt::TabFocusReason);
      QCOMPARE(dialog.Text("txtPrecioExt"), afterLeaving);
      dialog.Press("cmdPublicacion_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Agregar()));
  }

  // Every key is the host's to take, to change or to refuse; a key replaces what is selected.
  void TheHostDecides() {
    TestHost host;
    automation::RegisterClass(u"KelAPI.cPrincipal"_s, [&] { return std::make_unique<OtherHost>(host.session); });
    OtherHost::asked.clear();
    host.driver.On("frmPublicacion", [&](const DialogUser& dialog) {
      dialog.Keys("txtPrecioNac", u"1-0x"_s);
      dialog.Key(Qt::Key_Backspace);
      QCOMPARE(dialog.Text("txtPrecioNac"), u"1-"_s);
      dialog.Find<QLineEdit>("txtPrecioNac")->selectAll();
      dialog.Keys("txtPrecioNac", u"7"_s);
      QCOMPARE(dialog.Text("txtPrecioNac"), u"7"_s);
      QCOMPARE(OtherHost::asked,
               (QStringList{u"49 txtPrecioNac 0 0"_s, u"45 txtPrecioNac 1 0"_s, u"48 txtPrecioNac 2 0"_s,
                            u"120 txtPrecioNac 2 0"_s, u"8 txtPrecioNac 3 0"_s, u"55 txtPrecioNac 0 2"_s}));
      dialog.Find("txtPrecioExt")->setFocus(Qt::TabFocusReason);
      dialog.Find("txtPrecioNac")->setFocus(Qt::TabFocusReason);
      QCOMPARE(dialog.Text("txtPrecioNac"), u"<7>"_s);
      QCOMPARE(dialog.Text("txtPrecioExt"), QString());
      dialog.Press("cmdPublicacion_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Agregar()));
  }
};

KEL_TEST(tst_amount_boxes);
#include "tst_amount_boxes.moc"
