#include "platform/automation/Error.h"
#include "resources/StringTable.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using resources::LoadResString;

class tst_string_table : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Blocks_data();
  void Blocks();
  void Texts_data();
  void Texts();
  void MissingNumber_data();
  void MissingNumber();
};

void tst_string_table::Blocks_data() {
  QTest::addColumn<int>("first");
  QTest::addColumn<int>("last");
  QTest::newRow("general") << 101 << 104;
  QTest::newRow("frmBanco captions") << 1000 << 1008;
  QTest::newRow("frmBanco messages") << 1100 << 1112;
  QTest::newRow("frmCabecera captions") << 2000 << 2006;
  QTest::newRow("frmCabecera messages") << 2100 << 2103;
  QTest::newRow("frmCartaModelo captions and menus") << 3000 << 3059;
  QTest::newRow("frmCartaModelo messages and markers") << 3100 << 3148;
  QTest::newRow("frmCobrador captions") << 4000 << 4006;
  QTest::newRow("frmCobrador messages") << 4100 << 4104;
  QTest::newRow("frmComunidadAutonoma captions") << 5000 << 5002;
  QTest::newRow("frmComunidadAutonoma messages") << 5100 << 5104;
  QTest::newRow("frmDeduccionComunidad captions") << 6000 << 6002;
  QTest::newRow("frmDeduccionComunidad messages") << 6100 << 6104;
  QTest::newRow("frmDiocesis captions") << 7000 << 7002;
  QTest::newRow("frmDiocesis messages") << 7100 << 7104;
  QTest::newRow("frmEmisor captions") << 8000 << 8009;
  QTest::newRow("frmEmisor messages") << 8100 << 8116;
  QTest::newRow("frmEncabezado captions") << 9000 << 9003;
  QTest::newRow("frmEncabezado messages") << 9100 << 9101;
  QTest::newRow("frmEtiquetas1") << 10000 << 10029;
  QTest::newRow("frmEtiquetas2 captions") << 11000 << 11009;
  QTest::newRow("frmEtiquetas2 messages") << 11100 << 11108;
  QTest::newRow("frmPais captions") << 12000 << 12002;
  QTest::newRow("frmPais messages") << 12100 << 12104;
  QTest::newRow("frmPresentador captions") << 13000 << 13009;
  QTest::newRow("frmPresentador messages") << 13100 << 13106;
  QTest::newRow("frmProvincia captions") << 14000 << 14003;
  QTest::newRow("frmProvincia messages") << 14100 << 14104;
  QTest::newRow("frmPublicacion captions") << 15002 << 15007;
  QTest::newRow("frmPublicacion messages") << 15100 << 15109;
  QTest::newRow("frmSucursal bank") << 16002 << 16004;
  QTest::newRow("frmSucursal branch") << 16006 << 16012;
  QTest::newRow("frmSucursal messages") << 16100 << 16107;
  QTest::newRow("frmTipoDeduccion") << 17000 << 17008;
  QTest::newRow("frmTipoDonativo captions") << 18002 << 18009;
  QTest::newRow("frmTipoDonativo messages") << 18100 << 18104;
}

void tst_string_table::Blocks() {
  QFETCH(int, first);
  QFETCH(int, last);
  for (int id = first; id <= last; ++id) {
    QVERIFY2(!LoadResString(id).trimmed().isEmpty(), qPrintable(QString::number(id)));
  }
}

void tst_string_table::Texts_data() {
  QTest::addColumn<int>("id");
  QTest::addColumn<QString>("text");
  QTest::newRow("first") << 101 << u"La clase no ha sido inicializada"_s;
  QTest::newRow("last") << 18104 << u"¿Desea guardar los cambios efectuados en el formulario?"_s;
  QTest::newRow("trailing blank kept") << 12103 << u"Error "_s;
  QTest::newRow("without the blank") << 14103 << u"Error"_s;
  QTest::newRow("leading blank kept") << 7103 << u" Sin provincia asociada"_s;
  QTest::newRow("blanks at both ends of a message in pieces") << 8109 << u" introducido es incorrecto."_s;
  QTest::newRow("blanks inside") << 3010 << u"Cor&tar                         Ctrl+X"_s;
  QTest::newRow("odd spelling kept")
      << 15106
      << u"Se disponde a cambiar los importes de las suscripciones que estén asociadas a este tipo de "
         "publicación. ¿Desea continuar con el proceso?"_s;
  QTest::newRow("euro sign") << 15101 << u"Importe (€)"_s;
  QTest::newRow("column mark") << 11103 << u"<Línea"_s;
  QTest::newRow("marker") << 3122 << u"[wd, dd de mmm de aaaa]"_s;
  QTest::newRow("shared accept button") << 1007 << u"&Aceptar"_s;
}

void tst_string_table::Texts() {
  QFETCH(int, id);
  QFETCH(QString, text);
  QCOMPARE(LoadResString(id), text);
}

void tst_string_table::MissingNumber_data() {
  QTest::addColumn<int>("id");
  QTest::newRow("none") << 0;
  QTest::newRow("negative") << -1;
  QTest::newRow("gap in a block") << 1009;
  QTest::newRow("behind the last") << 18105;
}

void tst_string_table::MissingNumber() {
  QFETCH(int, id);
  try {
    LoadResString(id);
    QFAIL("a missing number must raise");
  } catch (const automation::Error& error) {
    QCOMPARE(error.Number(), int(automation::ResourceNotFound));
    QVERIFY(error.Description().contains(QString::number(id)));
  }
}

KEL_TEST(tst_string_table);
#include "tst_string_table.moc"
