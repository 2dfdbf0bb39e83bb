#include "host/calibration/CalibrationDialog.h"
#include "platform/automation/Error.h"
#include "support/Driver.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QLabel>
#include <QMessageBox>
#include <QTest>

using namespace Qt::StringLiterals;

using support::DialogUser;

/// A printer is measured as a person does it, without a printer.
class tst_calibration_dialog : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Answers_data();
  void Answers();
  void KeptAndDropped();
  void WithoutAPrinter();

 private:
  host::Printers Office() {
    return {.queues =
                [] {
                  return QList<host::PrintQueue>{
                      {.name = u"archivo"_s, .title = u"Archivo"_s, .trouble = {}},
                      {.name = u"oficina"_s, .title = u"Oficina"_s, .trouble = {}, .isUsual = true}};
                },
            .trays =
                [](const QString& queue) {
                  return queue == u"oficina"_s ? QList<host::PrintTray>{{u"tray-1"_s, u"Bandeja 1"_s}}
                                               : QList<host::PrintTray>();
                },
            .print =
                [this](const host::PrintedWork& work, const host::PrintWish& wish) {
                  if (m_isStopped) {
                    throw automation::Error(5, u"La impresora está parada."_s);
                  }
                  m_printed.append(u"%1 %2 %3 %4"_s.arg(work.Title(), wish.queue, wish.tray)
                                       .arg(wish.calibration.offset.x(), 0, 'f', 2));
                }};
  }

  support::TestDatabase m_database;
  QStringList m_printed;
  bool m_isStopped = false;
};

void tst_calibration_dialog::Answers_data() {
  QTest::addColumn<QString>("measures");
  QTest::addColumn<QString>("results");
  QTest::addColumn<QString>("verdict");
  QTest::newRow("good") << u"21,2 19.1 169,6 249,5"_s
                        << u"\u22121,2 mm (a la izquierda)|+0,9 mm (hacia abajo)|100,24 %|100,20 %"_s << u"0,25 mm"_s;
  QTest::newRow("nothing to do") << u"20 20 170 250"_s << u"0,0 mm|0,0 mm|100,00 %|100,00 %"_s << u"0,25 mm"_s;
  const QString nothing = u"|||"_s;
  QTest::newRow("one is missing") << u"20 20 170"_s << nothing << u"las cuatro medidas"_s;
  QTest::newRow("a bare 0") << u"0 20 170 250"_s << nothing << u"«0»"_s;
  QTest::newRow("a letter") << u"2O 20 170 250"_s << nothing << u"«2O» no es una medida"_s;
  QTest::newRow("a forgotten comma") << u"20 200 170 250"_s << nothing << u"«200»"_s;
  QTest::newRow("swapped") << u"170 20 20 250"_s << nothing << u"cambiadas"_s;
}

void tst_calibration_dialog::Answers() {
  QFETCH(QString, measures);
  QFETCH(QString, results);
  QFETCH(QString, verdict);
  host::CalibrationDialog dialog(m_database.Connection(), u"ana"_s, {}, Office());
  dialog.show();
  const DialogUser user(&dialog);
  QCOMPARE(user.Text("calibratedPrinter"), u"Oficina"_s);
  const QStringList texts = measures.split(u' ');
  for (int i = 0; i < texts.size(); ++i) {
    user.Type(qPrintable(u"measure_%1"_s.arg(i)), texts[i]);
  }
  QStringList shown;
  for (int i = 0; i < 4; ++i) {
    shown.append(dialog.findChild<QLabel*>(u"calibrationResult_%1"_s.arg(i))->text());
  }
  QCOMPARE(shown.join(u'|'), results);
  QVERIFY2(user.Text("calibrationVerdict").contains(verdict), qPrintable(user.Text("calibrationVerdict")));
  QCOMPARE(user.IsEnabled("keepCalibration"), !results.startsWith(u'|'));
  QCOMPARE(user.IsEnabled("printCorrected"), !results.startsWith(u'|'));
}

void tst_calibration_dialog::KeptAndDropped() {
  {
    host::CalibrationDialog dialog(m_database.Connection(), u"ana"_s, {}, Office());
    dialog.show();
    const DialogUser user(&dialog);
    user.Choose("calibratedTray", u"Bandeja 1"_s);
    user.Press("printCalibration");
    for (const auto& [box, text] : {std::pair("measure_0", u"21,2"_s),
                                    {"measure_1", u"19,1"_s},
                                    {"measure_2", u"170"_s},
                                    {"measure_3", u"250"_s}}) {
      user.Type(box, text);
    }
    user.Press("printCorrected");
    QCOMPARE(m_printed.join(u'|'),
             u"Página de calibración oficina tray-1 0.00|Página de calibración oficina tray-1 1.20"_s);
    m_isStopped = true;
    user.Press("printCorrected");
    QCOMPARE(user.Text("calibrationVerdict"), u"La impresora está parada."_s);
    user.Press("keepCalibration");
    QVERIFY(!dialog.isVisible());
  }
  // Another printer, the same one's other tray, and the one that was measured.
  host::CalibrationDialog dialog(m_database.Connection(), u"ana"_s, u"archivo"_s, Office());
  dialog.show();
  const DialogUser user(&dialog);
  QCOMPARE(user.Text("calibrationState"), u"Sin calibrar en este equipo."_s);
  user.Choose("calibratedPrinter", u"Oficina"_s);
  QCOMPARE(user.Text("measure_0"), QString());
  user.Choose("calibratedTray", u"Bandeja 1"_s);
  QCOMPARE(user.Text("measure_0"), u"21,20"_s);
  QVERIFY(user.Text("calibrationState").contains(u"por «ana»"_s));
  support::Driver driver;
  driver.Answer(QMessageBox::Yes);
  user.Press("dropCalibration");
  QCOMPARE(user.Text("calibrationState"), u"Sin calibrar en este equipo."_s);
  QVERIFY(!user.IsEnabled("dropCalibration"));
}

void tst_calibration_dialog::WithoutAPrinter() {
  host::CalibrationDialog dialog(m_database.Connection(), u"ana"_s, u"oficina"_s,
                                 {.queues = [] { return QList<host::PrintQueue>(); }, .trays = {}, .print = {}});
  dialog.show();
  const DialogUser user(&dialog);
  QCOMPARE(user.Text("calibrationState"), u"No hay ninguna impresora en este equipo."_s);
  for (const char* control : {"printCalibration", "keepCalibration", "printCorrected", "dropCalibration"}) {
    QVERIFY2(!user.IsEnabled(control), control);
  }
}

KEL_TEST(tst_calibration_dialog);
#include "tst_calibration_dialog.moc"
