#include "MailingUser.h"
#include "TestDesktop.h"
#include "host_mailing/PdfWords.h"
#include "support/PrintServer.h"
#include "support/Relay.h"
#include "support/SmallDisk.h"
#include "support/TestProgram.h"

#include "host/desktop/ProgramEnd.h"
#include "host/mailing/window/SheetStartPicture.h"

#include <QMessageBox>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSpinBox>
#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

using support::OutputOf;
using support::Word;
using support::WordsOf;

namespace {

host::MailingContext ContextOf(const QString& connectionString) {
  host::MailingContext context;
  context.connectionString = connectionString;
  context.title = u"Kel"_s;
  context.user = {1, true};
  return context;
}

/// Where the words of the PDF stand that are those of the other one, each moved by so many millimetres; nothing where
/// one is missing or is further than 0.05 mm from there.
QString Misplaced(const QString& pdf, const QString& other, QPointF moved = {}) {
  const QList<Word> words = WordsOf(pdf);
  const QList<Word> others = WordsOf(other);
  if (words.size() != others.size() || words.isEmpty()) {
    return u"%1 and %2 words"_s.arg(words.size()).arg(others.size());
  }
  for (qsizetype i = 0; i < words.size(); ++i) {
    const QPointF miss = QPointF(words[i].x - others[i].x, words[i].y - others[i].y) - moved;
    if (words[i].text != others[i].text || std::abs(miss.x()) > 0.05 || std::abs(miss.y()) > 0.05) {
      return u"'%1' is off by %2 %3"_s.arg(words[i].text).arg(miss.x()).arg(miss.y());
    }
  }
  return {};
}

}  // namespace

/// The mailing window with a real printer, and what it does where something goes wrong.
class tst_mailing_troubles : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    m_database = std::make_unique<support::TestDatabase>(database::Content::Demonstration);
    m_driver = std::make_unique<support::Driver>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_database->Path(u"."_s));
  }
  void cleanup() {
    QCOMPARE(m_driver->TakeProblems(), QStringList());
    m_driver.reset();
    m_database.reset();
  }
  void Printed();
  void PrinterGoneMeanwhile_data();
  void PrinterGoneMeanwhile();
  void DiskFull();
  void FolderForReading();
  void DatabaseGone();
  void Signalled();

 private:
  /// Prints on the office's printer; `more` has chosen something else of the dialog before.
  void Print(const MailingUser& user, const support::Driver::Script& more) {
    m_driver->On("dlgImprimir", [more](const support::DialogUser& dialog) {
      dialog.Choose("cboImpresora", u"Oficina"_s);
      more(dialog);
      dialog.Press("cmdImprimirYa");
    });
    user.Trigger("actImprimir");
  }

  std::unique_ptr<support::TestDatabase> m_database;
  std::unique_ptr<support::Driver> m_driver;
};

/// What a queue delivers is as large as the file and where the file has it, though the queue usually makes pages fit;
/// tray, both sides, pages and copies are those of the dialog, calibration is taken back, and the labels' end is kept.
void tst_mailing_troubles::Printed() {
  const support::PrintServer printers;
  host::MailingWindow window(ContextOf(m_database->ConnectionString()));
  window.show();
  const MailingUser user(window, *m_driver);
  user.Choose("cboSeleccion", u"Colaboradores del extranjero (compartida)"_s);
  user.Choose("cboCarta", u"Agradecimiento de donativo"_s);
  const QString letters = m_database->Path(u"cartas.pdf"_s);
  user.Make("actPdf", "dlgPdf", letters);
  Print(user, [](const support::DialogUser& dialog) {
    QVERIFY(dialog.Items("cboBandeja").size() == 3);
    dialog.Choose("cboBandeja", dialog.Items("cboBandeja")[2]);
    dialog.Find<QCheckBox>("chkDosCaras")->click();
  });
  QCOMPARE(user.Text("lblEstado"), u"Enviado a la impresora «oficina», trabajo 1."_s);
  const support::PrintServer::Delivery both = printers.Delivered(1);
  QVERIFY2(both.options.contains(u" InputSlot=Lower "_s) && both.options.contains(u" Duplex=DuplexNoTumble "_s),
           qPrintable(both.options));
  QCOMPARE(Misplaced(both.pdf, letters), QString());
  // Thirteen letters of a page, each on a sheet of its own.
  QVERIFY(OutputOf(u"pdfinfo"_s, {both.pdf}).contains(QRegularExpression(u"Pages: +25\n"_s)));
  Print(user, [](const support::DialogUser& dialog) {
    dialog.Find<QRadioButton>("optAlgunas")->click();
    dialog.Find<QSpinBox>("numPaginaPrimera")->setValue(3);
    dialog.Find<QSpinBox>("numPaginaUltima")->setValue(4);
    dialog.Find<QSpinBox>("numEjemplares")->setValue(2);
  });
  const support::PrintServer::Delivery some = printers.Delivered(2);
  const QString third = m_database->Path(u"3.pdf"_s);
  OutputOf(u"qpdf"_s, {letters, u"--pages"_s, letters, u"3-4"_s, u"--"_s, third});
  QCOMPARE(Misplaced(some.pdf, third), QString());
  QVERIFY2(some.options.contains(u" copies=2 "_s) && some.options.contains(u" Duplex=None "_s),
           qPrintable(some.options));

  m_database->Execute(
      u"INSERT INTO ImpresorasCalibracion (Equipo, Impresora, Bandeja, DesplazamientoX, DesplazamientoY, EscalaX, "
      u"EscalaY) VALUES ('{}', 'oficina', '', '1,5', '-2', '1', '1')",
      QSysInfo::machineHostName());
  user.Trigger("actEtiquetas");
  user.Find<QSpinBox>("numPrimera")->setValue(7);
  user.Wait();
  const QString labels = m_database->Path(u"etiquetas.pdf"_s);
  user.Make("actPdf", "dlgPdf", labels);
  m_driver->Answer(QMessageBox::Yes);
  Print(user, [](const support::DialogUser&) {});
  QCOMPARE(Misplaced(printers.Delivered(3).pdf, labels, {-1.5, 2}), QString());
  // From label 7 on, fourteen of them.
  QCOMPARE(m_database->Query(u"SELECT NULTIMAETIQUETA, ULTIMOUTILIZADO FROM ETIQUETAS WHERE IDETIQUETA=1"),
           QStringList(u"20|1"_s));
  QCOMPARE(user.Find<host::SheetStartPicture>("picHoja")->Start().first, 21);
  QVERIFY(m_driver->TakeBoxes().join(u' ').contains(u"¿Han salido bien"_s));
  QVERIFY(!printers.Logs().contains(u"Garz"_s) && printers.Logs().contains(u"Agradecimiento"_s));
}

void tst_mailing_troubles::PrinterGoneMeanwhile_data() {
  QTest::addColumn<bool>("isStopped");
  QTest::addColumn<QString>("said");
  QTest::newRow("the printer is stopped") << true << u"«oficina» está parada"_s;
  QTest::newRow("the print server ends") << false << u"No hay ninguna impresora «oficina»"_s;
}

/// Nothing is printed by half: what was being painted goes, and the file with it.
void tst_mailing_troubles::PrinterGoneMeanwhile() {
  QFETCH(bool, isStopped);
  QFETCH(QString, said);
  support::PrintServer printers;
  host::MailingWindow window(ContextOf(m_database->ConnectionString()));
  window.show();
  const MailingUser user(window, *m_driver);
  user.Choose("cboSeleccion", u"Todas las personas (compartida)"_s);
  user.Choose("cboCarta", u"Agradecimiento de donativo"_s);
  const QString place = m_database->Path(u"."_s) + u"/temporal"_s;
  QDir().mkpath(place);
  qputenv("TMPDIR", QFile::encodeName(place));
  const auto back = qScopeGuard([] { qunsetenv("TMPDIR"); });
  const auto isPainting = [&] { return user.Text("lblEstado").startsWith(u"Escribiendo: "_s); };
  m_driver->On("dlgImprimir", [](const support::DialogUser& dialog) { dialog.Press("cmdImprimirYa"); });
  m_driver->Answer(QMessageBox::Ok);
  user.Action("actImprimir").trigger();
  QVERIFY(QTest::qWaitFor(isPainting, 20'000));
  isStopped ? support::PrintServer::Pause("oficina") : printers.End();
  user.Wait();
  QVERIFY2(user.Text("lblEstado").contains(said), qPrintable(user.Text("lblEstado")));
  QCOMPARE(FilesIn(place), QStringList());
  m_driver->On("dlgImprimir", [&](const support::DialogUser& dialog) {
    QVERIFY(!dialog.IsEnabled("cmdImprimirYa"));
    if (isStopped) {
      dialog.Choose("cboImpresora", u"Cerrada"_s);
      QVERIFY(!dialog.IsEnabled("cmdImprimirYa"));
    }
    dialog.Close();
  });
  user.Trigger("actImprimir");
  QCOMPARE(m_driver->TakeBoxes().size(), 1);
}

/// Of one file nothing is left; of many those that are whole, and they are counted.
void tst_mailing_troubles::DiskFull() {
  const support::SmallDisk disk;
  if (!disk.IsThere()) {
    QSKIP("no small disk");
  }
  host::MailingWindow window(ContextOf(m_database->ConnectionString()));
  window.show();
  const MailingUser user(window, *m_driver);
  user.Choose("cboSeleccion", u"Todas las personas (compartida)"_s);
  user.Choose("cboCarta", u"Agradecimiento de donativo"_s);
  const QDir folder(disk.Path(u"cartas"_s));
  folder.mkpath(u"."_s);
  QFile most(disk.Path(u"otro"_s));
  QVERIFY(most.open(QFile::WriteOnly) && most.write(QByteArray(6'000'000, 'x')) > 0);
  m_driver->Answer(QMessageBox::Ok);
  const QString said = user.Make("actPdfPorPersona", "dlgCarpeta", folder.path());
  const QStringList files = folder.entryList(QDir::Files | QDir::Hidden, QDir::Time);
  static const QRegularExpression count(u"Quedan (\\d+) de (\\d+) archivos en"_s);
  const QRegularExpressionMatch counted = count.match(said);
  QVERIFY2(said.contains(u"sitio en el disco"_s) && counted.hasMatch(), qPrintable(said));
  QCOMPARE(counted.captured(1).toInt(), files.size());
  QVERIFY(!files.isEmpty() && files.size() < counted.captured(2).toInt());
  QVERIFY(OutputOf(u"qpdf"_s, {u"--check"_s, folder.filePath(files.constFirst())}).contains(u"No syntax"_s));
  disk.Fill();
  m_driver->Answer(QMessageBox::Ok);
  QVERIFY(user.Make("actPdf", "dlgPdf", disk.Path(u"x.pdf"_s)).contains(u"sitio en el disco"_s));
  QCOMPARE(FilesIn(disk.Path({})).size(), 3);
  m_driver->TakeBoxes();
}

/// And the next dialog begins where the last file went.
void tst_mailing_troubles::FolderForReading() {
  const support::SmallDisk disk;
  if (!disk.IsThere()) {
    QSKIP("no small disk");
  }
  disk.CloseToWriting();
  host::MailingWindow window(ContextOf(m_database->ConnectionString()));
  window.show();
  const MailingUser user(window, *m_driver);
  user.Choose("cboCarta", u"Agradecimiento de donativo"_s);
  for (const auto& [action, dialog, target] : {std::tuple("actPdf", "dlgPdf", disk.Path(u"x.pdf"_s)),
                                               {"actPdfPorPersona", "dlgCarpeta", disk.Path({})},
                                               {"actRtfPorPersona", "dlgCarpeta", disk.Path({})}}) {
    m_driver->Answer(QMessageBox::Ok);
    const QString said = user.Make(action, dialog, target);
    QVERIFY2(said.startsWith(u"No se puede"_s) && said.contains(u"permisos"_s), qPrintable(said));
    QVERIFY(user.Action(action).isEnabled());
  }
  QString begins;
  m_driver->On("dlgPdf", [&](const support::DialogUser& dialog) {
    begins = qobject_cast<QFileDialog*>(dialog.Dialog())->directory().path();
    dialog.Close();
  });
  user.Trigger("actPdf");
  QCOMPARE(QDir(begins), QDir(disk.Path({})));
  m_driver->TakeBoxes();
}

/// A file that was moved away, a server that is gone: said, nothing written, and no empty database in the old one's
/// place.
void tst_mailing_troubles::DatabaseGone() {
  std::optional<support::Relay> relay;
  if (m_database->Server() != nullptr) {
    relay.emplace(m_database->ConnectionString());
  }
  host::MailingWindow window(ContextOf(relay ? relay->ConnectionString() : m_database->ConnectionString()));
  window.show();
  const MailingUser user(window, *m_driver);
  user.Choose("cboCarta", u"Agradecimiento de donativo"_s);
  const QString file = m_database->Path();
  if (relay) {
    relay->BeAway(true);
    m_database->Server()->Run(
        u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE application_name LIKE 'kel %' AND "
        "datname=current_database()"_s);
  } else {
    QVERIFY(QFile::rename(file, file + u".fuera"_s));
  }
  const QString pdf = m_database->Path(u"cartas.pdf"_s);
  m_driver->Answer(QMessageBox::Ok);
  const QString said = user.Make("actPdf", "dlgPdf", pdf);
  QVERIFY2(said.contains(u"base de datos"_s) || said.contains(u"servidor"_s), qPrintable(said));
  QVERIFY(!QFile::exists(pdf));
  QVERIFY(relay || !QFile::exists(file));
  m_driver->TakeBoxes();
  if (relay) {
    relay->BeAway(false);
  } else {
    QVERIFY(QFile::rename(file + u".fuera"_s, file));
  }
  QVERIFY(user.Make("actPdf", "dlgPdf", pdf).contains(pdf));
}

/// The program is ended in the middle of a run.
void tst_mailing_troubles::Signalled() {
  TestDesktop desktop(database::Content::Demonstration);
  desktop.Window();
  const QDir folder(desktop.database.Path(u"salida"_s));
  folder.mkpath(u"."_s);
  desktop.Action("actMailing").trigger();
  host::MailingWindow* window = nullptr;
  for (QWidget* top : QApplication::topLevelWidgets()) {
    window = qobject_cast<host::MailingWindow*>(top) != nullptr ? qobject_cast<host::MailingWindow*>(top) : window;
  }
  const MailingUser user(*window, desktop.driver);
  user.Choose("cboSeleccion", u"Todas las personas (compartida)"_s);
  user.Choose("cboCarta", u"Agradecimiento de donativo"_s);
  user.Begin("actPdfPorPersona", "dlgCarpeta", folder.path());
  const auto end = std::make_unique<host::ProgramEnd>(desktop.Bridge());
  QTimer look;
  look.callOnTimeout([&] {
    if (FilesIn(folder.path()).size() > 3) {
      look.stop();
      raise(SIGTERM);
    }
  });
  look.start(1);
  QTimer::singleShot(30'000, &look, [] { QCoreApplication::exit(1); });
  QCOMPARE(QCoreApplication::exec(), 0);
  QVERIFY(window->IsBusy());
  desktop.Restart();
  const QStringList files = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Time);
  QVERIFY(!files.isEmpty() && files.size() < 300);
  QCOMPARE(files.filter(QRegularExpression(u"^[^.].*\\.pdf$"_s)).size(), files.size());
  QVERIFY(OutputOf(u"qpdf"_s, {u"--check"_s, folder.filePath(files.constFirst())}).contains(u"No syntax"_s));
}

KEL_TEST(tst_mailing_troubles);
#include "tst_mailing_troubles.moc"
