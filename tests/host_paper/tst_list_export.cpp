#include "host/paper/ExportDialog.h"
#include "host/paper/ListExport.h"
#include "host/paper/ListPrintDialog.h"
#include "host_mailing/PdfWords.h"
#include "host_paper/Lists.h"
#include "support/Driver.h"
#include "support/SmallDisk.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Texts that a spreadsheet would take for something else, and a number below zero.
host::ListTable Awkward() {
  return MakeList(
      {{u"Código"_s}, {u"Texto"_s}, {u"Saldo"_s, host::ColumnKind::Amount}, {u"Vale"_s, host::ColumnKind::YesNo}},
      {{u"0049"_s, u"=1+2"_s, -1.5, true}, {u"-7"_s, u"\tx; \"y\"\r\nz"_s, QVariant(), false}});
}

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QFile::ReadOnly) ? file.readAll() : "no file";
}

QStringList Files(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// The next box of files gets this path.
void ChooseFile(support::Driver& driver, const QString& path) {
  driver.On("dlgGuardar", [path](const support::DialogUser& user) {
    user.Find<QLineEdit>("fileNameEdit")->setText(path);
    user.Dialog()->findChild<QDialogButtonBox*>()->buttons().constFirst()->click();
  });
}

}  // namespace

/// Lists that leave the window as files.
class tst_list_export : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void Kinds();
  void NothingIsLeftOfAFailure_data();
  void NothingIsLeftOfAFailure();
  void TheBoxWritesWhatIsChosen();
  void ThePreviewPrintsWhatIsChosen();

 private:
  QTemporaryDir m_settings;
};

void tst_list_export::initTestCase() {
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
}

void tst_list_export::Kinds() {
  const QTemporaryDir folder;
  host::RunControl control;
  const QString csv = folder.filePath(u"lista.csv"_s);
  QVERIFY(host::ExportList(Awkward(), csv, control));
  QCOMPARE(Content(csv),
           "\xEF\xBB\xBF"
           "Código;Texto;Saldo;Vale\r\n"
           "0049;'=1+2;-1,5;Sí\r\n"
           "'-7;\"'\tx; \"\"y\"\"\r\nz\";;No\r\n"_ba);
  // Another program reads the spreadsheet: codes and texts are what they were.
  const QString ods = folder.filePath(u"lista.ods"_s);
  QVERIFY(host::ExportList(Awkward(), ods, control));
  support::OutputOf(u"soffice"_s,
                    {u"-env:UserInstallation=file://"_s + folder.filePath(u"perfil"_s), u"--headless"_s,
                     u"--convert-to"_s, u"csv:Text - txt - csv (StarCalc):59,34,76,1,,0,false,true,false"_s,
                     u"--outdir"_s, folder.filePath(u"leido"_s), ods});
  QCOMPARE(Content(folder.filePath(u"leido/lista.csv"_s)),
           "Código;Texto;Saldo;Vale\n"
           "0049;=1+2;-1.5;Sí\n"
           "-7;\"\tx; \"\"y\"\"\r\nz\";;No\n"_ba);
  const QString pdf = folder.filePath(u"lista.PDF"_s);
  QVERIFY(host::ExportList(Awkward(), pdf, control));
  QVERIFY(support::OutputOf(u"pdftotext"_s, {pdf, u"-"_s}).contains(u"=1+2"_s));
  control.Cancel();
  for (const QString& ending : {u"ods"_s, u"csv"_s, u"pdf"_s}) {
    QVERIFY(!host::ExportList(Awkward(), folder.filePath(u"otra."_s + ending), control));
  }
  QCOMPARE(Files(folder.path()),
           QStringList({u"leido"_s, u"lista.csv"_s, u"lista.ods"_s, u"lista.PDF"_s, u"perfil"_s}));
}

void tst_list_export::NothingIsLeftOfAFailure_data() {
  QTest::addColumn<QString>("ending");
  for (const char* ending : {"ods", "csv", "pdf"}) {
    QTest::newRow(ending) << QString::fromLatin1(ending);
  }
}

void tst_list_export::NothingIsLeftOfAFailure() {
  QFETCH(QString, ending);
  const QTemporaryDir folder;
  const auto error = [&](const QString& path, const host::ListTable& table) {
    host::RunControl control;
    try {
      host::ExportList(table, path, control);
    } catch (const automation::Error& raised) {
      return raised.Description();
    }
    return QString();
  };
  QVERIFY(error(folder.filePath(u"no/x."_s + ending), Banks(3)).contains(u"Compruebe la carpeta"_s));
  // The old file stays, whatever happens to the new one.
  const QString path = folder.filePath(u"x."_s + ending);
  QCOMPARE(error(path, Banks(3)), QString());
  const QByteArray before = Content(path);
  QVERIFY(QFile(folder.filePath(u".~lock.x.%1#"_s.arg(ending))).open(QFile::WriteOnly));
  QVERIFY(error(path, Banks(9)).contains(u"está abierto en otro programa"_s));
  QCOMPARE(Content(path), before);
  const support::SmallDisk disk;
  if (!disk.IsThere()) {
    QSKIP("no rights for a disk of its own");
  }
  const QString there = disk.Path(u"x."_s + ending);
  QCOMPARE(error(there, Banks(3)), QString());
  disk.Fill();
  QVERIFY(error(there, Banks(20000)).contains(u"sitio"_s));
  disk.Free();
  disk.CloseToWriting();
  QVERIFY(error(there, Banks(9)).contains(u"permisos"_s));
  QCOMPARE(Files(disk.Path(u"."_s)), QStringList(u"x."_s + ending));
}

void tst_list_export::TheBoxWritesWhatIsChosen() {
  const QTemporaryDir folder;
  support::Driver driver;
  host::ListTable one = Banks(5);
  one.rows.rows = {2};
  host::ExportDialog dialog(Banks(5), one);
  dialog.show();
  dialog.findChild<QRadioButton*>(u"optcsv"_s)->click();
  QVERIFY(dialog.findChild<QLabel*>(u"lblConsejo"_s)->text().contains(u"quitan los ceros"_s));
  dialog.findChild<QRadioButton*>(u"optSeleccionados"_s)->click();
  // What can't be written is told, and another try is free.
  const auto save = [&](const QString& path) {
    ChooseFile(driver, path);
    dialog.findChild<QPushButton*>(u"cmdGuardar"_s)->click();
  };
  const QString locked = folder.filePath(u"abierto.csv"_s);
  QVERIFY(QFile(folder.filePath(u".~lock.abierto.csv#"_s)).open(QFile::WriteOnly));
  driver.Answer(QMessageBox::Ok);
  save(locked);
  QTRY_COMPARE(driver.Boxes().size(), 1);
  QVERIFY(driver.TakeBoxes().constFirst().contains(u"La lista no se ha exportado"_s));
  QVERIFY(dialog.isVisible());
  const QString path = folder.filePath(u"uno.csv"_s);
  save(path);
  QTRY_COMPARE(dialog.result(), int(QDialog::Accepted));
  QVERIFY(dialog.News().contains(path) && dialog.News().contains(u"1 registro"_s));
  QVERIFY(Content(path).endsWith("Saldo\r\n0003;Banco 3;-4,5\r\n"));
  QCOMPARE(driver.TakeProblems(), QStringList());
  // The kind is remembered; without a selection there is nothing to choose.
  const host::ExportDialog next(Banks(5), MakeList({{u"Número"_s}}, {}));
  QVERIFY(next.findChild<QRadioButton*>(u"optcsv"_s)->isChecked());
  QVERIFY(!next.findChild<QRadioButton*>(u"optSeleccionados"_s)->isEnabled());
}

void tst_list_export::ThePreviewPrintsWhatIsChosen() {
  const support::TestDatabase database;
  const QTemporaryDir folder;
  support::Driver driver;
  host::ListPrintDialog dialog(Banks(200), Banks(2), database.ConnectionString());
  dialog.show();
  QTRY_VERIFY(!dialog.IsBusy());
  QCOMPARE(dialog.findChild<QLabel*>(u"lblCaben"_s)->text(), u"Caben todas las columnas."_s);
  QVERIFY(!dialog.findChild<QRadioButton*>(u"optApaisada"_s)->isChecked());
  QVERIFY(dialog.findChild<QSpinBox*>(u"numPaginaUltima"_s)->value() > 2);
  auto* columns = dialog.findChild<QListWidget*>(u"lstColumnas"_s);
  columns->item(1)->setCheckState(Qt::Unchecked);
  dialog.findChild<QRadioButton*>(u"optApaisada"_s)->click();
  dialog.findChild<QRadioButton*>(u"optSeleccionados"_s)->click();
  QCOMPARE(dialog.findChild<QSpinBox*>(u"numPaginaUltima"_s)->value(), 1);
  // The trays are the printer's; one that is stopped prints nothing.
  auto* choice = dialog.findChild<host::PrinterChoice*>();
  const auto* print = dialog.findChild<QPushButton*>(u"cmdImprimir"_s);
  host::KnownPrinter printer;
  printer.name = printer.title = u"oficina"_s;
  printer.trays = {{u"tray-2"_s, u"Bandeja 2"_s}};
  host::KnownPrinter stopped;
  stopped.name = stopped.title = u"parada"_s;
  stopped.trouble = u"Está parada."_s;
  choice->Show({printer, stopped});
  dialog.findChild<QComboBox*>(u"cboBandeja"_s)->setCurrentIndex(1);
  QVERIFY(print->isEnabled() && choice->Queue() == u"oficina" && choice->Tray() == u"tray-2");
  dialog.findChild<QComboBox*>(u"cboImpresora"_s)->setCurrentIndex(1);
  QVERIFY(!print->isEnabled() && choice->Tray().isEmpty());
  const QString path = folder.filePath(u"dos.pdf"_s);
  ChooseFile(driver, path);
  dialog.findChild<QPushButton*>(u"cmdPdf"_s)->click();
  QTRY_VERIFY(!dialog.IsBusy());
  QTRY_VERIFY(dialog.News().contains(path));
  const QString text = support::OutputOf(u"pdftotext"_s, {u"-layout"_s, path, u"-"_s});
  QVERIFY2(text.contains(u"0002"_s) && !text.contains(u"0003"_s) && !text.contains(u"Nombre"_s), qPrintable(text));
  QVERIFY(support::OutputOf(u"pdfinfo"_s, {path}).contains(QRegularExpression(u"Page size: +84[12][.\\d]* x 595"_s)));
  columns->item(0)->setCheckState(Qt::Unchecked);
  columns->item(2)->setCheckState(Qt::Unchecked);
  QVERIFY(!dialog.findChild<QPushButton*>(u"cmdPdf"_s)->isEnabled());
  QCOMPARE(driver.TakeProblems(), QStringList());
}

KEL_TEST(tst_list_export);
#include "tst_list_export.moc"
