#include "support/Driver.h"
#include "support/TestProgram.h"

#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

using namespace Qt::StringLiterals;

using automation::Call;
using automation::Get;
using automation::Put;
using automation::Ref;

class tst_services : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();

  void EveryObjectSharesTheSession();
  void TheRequestBelongsToOneObject();
  void ErrorIsShown();
  void TaxIdentifierThroughReferences();
  void Euros_data();
  void Euros();
  void EuroKeys_data();
  void EuroKeys();
  void EuroKeyInABox();

 private:
  host::Session m_session;
  std::unique_ptr<QObject> m_api;
};

void tst_services::init() {
  m_session = {};
  m_session.title = u"Benefactores"_s;
  host::RegisterClasses(m_session);
  m_api = automation::CreateObject(u"kelapi.CPRINCIPAL"_s);
}

void tst_services::cleanup() {
  m_api.reset();
  host::UnregisterClasses();
}

void tst_services::EveryObjectSharesTheSession() {
  m_session.icon = u"/i.ico"_s;
  m_session.userId = 7;
  m_session.userKind = 1;
  m_session.velumar = true;
  const auto fresh = automation::CreateObject(u"KelApi.cPrincipal"_s);
  for (QObject* api : {m_api.get(), fresh.get()}) {
    QCOMPARE(Get(api, "TITULOAPLICACION").toString(), u"Benefactores"_s);
    QCOMPARE(Get(api, "Icono").toString(), u"/i.ico"_s);
    QCOMPARE(Get(api, "IDUsuario").toInt(), 7);
    QCOMPARE(Get(api, "TipoUsuario").toInt(), 1);
    QCOMPARE(Get(api, "velumar").toBool(), true);
    QCOMPARE(Get(api, "congestion").value<adodb::Connection*>(), nullptr);
  }
}

void tst_services::TheRequestBelongsToOneObject() {
  const auto fresh = automation::CreateObject(u"KelApi.cPrincipal"_s);
  Put(m_api.get(), "IDNodo", 19);
  Put(m_api.get(), "accion", 2);
  Put(m_api.get(), "IDSeleccionado", u"35"_s);
  Put(m_api.get(), "IDAux", QVariant::fromValue(this));
  QCOMPARE(Get(m_api.get(), "idnodo").toInt(), 19);
  QCOMPARE(Get(m_api.get(), "Accion").toInt(), 2);
  QCOMPARE(Get(m_api.get(), "IDSeleccionado").toInt(), 35);
  QCOMPARE(Get(m_api.get(), "IDAux").value<tst_services*>(), this);
  QCOMPARE(Get(fresh.get(), "IDNodo").toInt(), 0);
  QCOMPARE(Get(fresh.get(), "IDAux").toInt(), 0);
}

void tst_services::ErrorIsShown() {
  support::Driver driver;
  driver.Answer(QMessageBox::Ok);
  automation::Err().Set(automation::Error(13, u"<b>No coinciden</b> 100%1"_s));
  Call(m_api.get(), "VerError", u"Form Load"_s, u"Emisores"_s, u"KelConfiguracion"_s);
  automation::Err().Clear();
  QCOMPARE(
      driver.TakeBoxes(),
      QStringList(u"Benefactores|critico|El cuadro no se ha podido abrir.|Un texto no vale donde va un número o una "
                  "fecha. Compruebe lo que ha escrito.|<b>No coinciden</b> 100%1\nError 13\nOrigen: "
                  "KelConfiguracion / Emisores / Form Load"_s));
  QCOMPARE(driver.TakeProblems(), QStringList());
}

void tst_services::TaxIdentifierThroughReferences() {
  QString kind;
  QString control;
  QCOMPARE(Call(m_api.get(), "cif_nif_valido", u"J99216583"_s, Ref(kind), Ref(control)).toInt(), 3);
  QCOMPARE(kind, u"CIF"_s);
  QCOMPARE(control, u"2"_s);
  QVariant variantKind;
  QVariant variantControl;
  QCOMPARE(Call(m_api.get(), "CIF_NIF_Valido", u"X1234567A"_s, Ref(variantKind), Ref(variantControl)).toInt(), 3);
  QCOMPARE(variantKind.toString(), u"NIE"_s);
  QCOMPARE(variantControl.toString(), u"L"_s);
  QCOMPARE(Call(m_api.get(), "Validar_NIF", u"54362315-K"_s).toInt(), 1);
  QCOMPARE(Call(m_api.get(), "Validar_NIF", u"54362315-Z"_s).toInt(), 3);
}

void tst_services::Euros_data() {
  QTest::addColumn<QVariant>("amount");
  QTest::addColumn<QString>("text");
  const auto typed = [](const char* text, const char* shown) {
    QTest::newRow(text) << QVariant(QString::fromUtf8(text)) << QString::fromUtf8(shown);
  };
  QTest::newRow("whole number") << QVariant(12) << u"12,00"_s;
  QTest::newRow("decimal") << QVariant(1234.5) << u"1.234,50"_s;
  QTest::newRow("currency") << QVariant::fromValue(automation::Currency::FromScaled(185000)) << u"18,50"_s;
  QTest::newRow("half away from zero") << QVariant(0.125) << u"0,13"_s;
  QTest::newRow("empty") << QVariant() << QString();
  QTest::newRow("null") << automation::Null() << QString();
  typed("1234,5", "1.234,50");
  typed("1.234,50", "1.234,50");
  typed("12.345,50", "12.345,50");
  typed("1.2345,50", "12.345,50");
  typed("12.5", "12,50");
  typed("12.50 €", "12,50");
  typed("1.234", "1.234,00");
  typed("1.234.567", "1.234.567,00");
  typed("-3", "-3,00");
  typed("", "");
  typed("doce", "doce");
  typed("1,2,3", "1,2,3");
  typed("12 34", "12 34");
}

void tst_services::Euros() {
  QFETCH(QVariant, amount);
  QFETCH(QString, text);
  const QString shown = Call(m_api.get(), "FormatearAEuros", amount).toString();
  QCOMPARE(shown, text);
  QCOMPARE(Call(m_api.get(), "FormatearAEuros", shown).toString(), shown);
}

void tst_services::EuroKeys_data() {
  QTest::addColumn<int>("key");
  QTest::addColumn<QString>("text");
  QTest::addColumn<int>("start");
  QTest::addColumn<int>("length");
  QTest::addColumn<int>("expected");
  const QString text = u"12,50"_s;
  QTest::newRow("digit") << int('7') << text << 0 << 0 << int('7');
  QTest::newRow("backspace") << 8 << text << 0 << 0 << 8;
  QTest::newRow("paste") << 22 << text << 0 << 0 << 22;
  QTest::newRow("letter") << int('x') << text << 0 << 0 << 0;
  QTest::newRow("minus") << int('-') << text << 0 << 0 << 0;
  QTest::newRow("superscript digit") << 0xb2 << text << 0 << 0 << 0;
  QTest::newRow("comma") << int(',') << u"12"_s << 2 << 0 << int(',');
  QTest::newRow("point becomes comma") << int('.') << u"1.200"_s << 5 << 0 << int(',');
  QTest::newRow("second comma") << int(',') << text << 5 << 0 << 0;
  QTest::newRow("second mark by point") << int('.') << text << 5 << 0 << 0;
  QTest::newRow("comma over the selected one") << int(',') << text << 0 << 5 << int(',');
  QTest::newRow("comma beside a selection") << int(',') << text << 0 << 2 << 0;
  QTest::newRow("selection beyond the text") << int(',') << text << 90 << 2000000000 << 0;
  QTest::newRow("negative selection") << int(',') << text << -4 << -1 << 0;
}

void tst_services::EuroKeys() {
  QFETCH(int, key);
  QFETCH(QString, text);
  QFETCH(int, start);
  QFETCH(int, length);
  QFETCH(int, expected);
  Call(m_api.get(), "VerificarEuros", Ref(key), text, start, length);
  QCOMPARE(key, expected);
}

void tst_services::EuroKeyInABox() {
  QLineEdit box(u"12,50"_s);
  int key = ',';
  Call(m_api.get(), "VerificarEuros", Ref(key), &box, 0, 5);
  QCOMPARE(key, 0);
  box.selectAll();
  key = '.';
  Call(m_api.get(), "VerificarEuros", Ref(key), &box, 0, 0);
  QCOMPARE(key, int(','));
}

KEL_TEST(tst_services);
#include "tst_services.moc"
