#include "MailingUser.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/mailing/window/MailingOutput.h"
#include "host/mailing/window/SheetStartPicture.h"
#include "platform/contract/cConstNodo.h"

#include <QCheckBox>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// The mailing window of a program, opened from its main window.
class Mailing {
 public:
  explicit Mailing(const char* action = "actMailing") {
    desktop.Window();
    Open(action);
  }

  void Open(const char* action) {
    desktop.Action(action).trigger();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* mailing = qobject_cast<host::MailingWindow*>(window);
      m_window = mailing != nullptr && mailing->isVisible() ? mailing : m_window;
    }
    m_user.emplace(*m_window, desktop.driver);
  }

  host::MailingWindow& Window() { return *m_window; }
  const MailingUser* operator->() const { return &*m_user; }
  QString Problems() { return desktop.TakeBoxes().join(u'\n'); }

  TestDesktop desktop{database::Content::Demonstration};

 private:
  host::MailingWindow* m_window = nullptr;
  std::optional<MailingUser> m_user;
};

}  // namespace

/// Letters and labels from choosing people to files.
class tst_mailing_window : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { qputenv("CUPS_SERVER", "/nowhere/cups.sock"); }
  void LabelsFromTheSheetsStart();
  void LettersAsFiles();
  void PeopleAreChosen();
  void SelectionsAreKept();
  void SelectionsOfOthers();
  void LeafingFollowsPeople();
  void WhatTheLetterAsksFor();
  void FaultsAreAccepted();
  void NothingToWrite();
  void ChangedMeanwhile();
  void Interrupted();
  void Differing();
  void WithoutPrinter();
};

/// The sheet's picture by mouse and keyboard, and what is proposed after the last print.
void tst_mailing_window::LabelsFromTheSheetsStart() {
  Mailing mailing;
  mailing.desktop.database.Execute(u"UPDATE ETIQUETAS SET NULTIMAETIQUETA=4 WHERE IDETIQUETA=1");
  mailing.Window().close();
  mailing.desktop.ChooseNode(cConstNodo().Etiquetas());
  mailing.desktop.List().SelectRecord(1);
  mailing.Open("actWriteToPeople");
  mailing->Choose("cboSeleccion", u"Suscriptores del Boletín (compartida)"_s);
  mailing.Window().resize(1200, 900);
  auto* picture = mailing->Find<host::SheetStartPicture>("picHoja");
  QCOMPARE(picture->Start().first, 5);
  picture->setFocus();
  QTest::keyClick(picture, Qt::Key_Down);
  QTest::keyClick(picture, Qt::Key_Left);
  QCOMPARE(picture->accessibleName(), u"Etiqueta 7 de 24, libre"_s);
  QTest::keyClick(picture, Qt::Key_Return);
  // In the third column of the fifth row of three columns and eight rows.
  const QPoint fifteenth(picture->width() * 5 / 6, picture->height() * 9 / 16);
  QTest::mouseClick(picture, Qt::LeftButton, Qt::ControlModifier, fifteenth);
  QTest::keyClick(picture, Qt::Key_End);
  QTest::keyClick(picture, Qt::Key_Space);
  QTest::keyClick(picture, Qt::Key_Space);
  QCOMPARE(picture->Start().first, 7);
  QCOMPARE(picture->Start().skipped, QSet<int>{15});
  mailing->Wait();
  const QString pieces = mailing->Text("lblPersonas").section(u" · "_s, 1);
  const int labels = pieces.section(u' ', 0, 0).toInt();
  // Some share an address.
  QVERIFY(labels > 17 && labels < mailing->People().People().Total());
  const QString pdf = mailing.desktop.database.Path(u"etiquetas.pdf"_s);
  const int sheets = 1 + (labels - 17 + 23) / 24;
  // One of them has a name that no label holds.
  mailing.desktop.driver.Answer(QMessageBox::Yes);
  QCOMPARE(mailing->Make("actPdf", "dlgPdf", pdf), u"%1, %2 hojas, en «%3»."_s.arg(pieces).arg(sheets).arg(pdf));
  QVERIFY(QFile::exists(pdf));
  QVERIFY(mailing->Text("lblHojas").startsWith(u"%1 hojas."_s.arg(sheets)));
  QTest::mouseClick(picture, Qt::LeftButton, {}, fifteenth);
  QCOMPARE(mailing->Find<QSpinBox>("numPrimera")->value(), 15);
  mailing->Press("cmdProponer");
  QCOMPARE(picture->Start().first, 5);
  mailing->Choose(
      "cboDestino",
      u"remite: "_s +
          mailing.desktop.database.Query(u"SELECT TOP 1 Nombre FROM Cabeceras ORDER BY IDCabecera").constFirst());
  mailing->Find<QSpinBox>("numCopias")->setValue(30);
  mailing->Wait();
  QVERIFY2(mailing->Text("lblPersonas").endsWith(u"30 etiquetas"_s), qPrintable(mailing->Text("lblPersonas")));
  mailing->Find<QDoubleSpinBox>("numPuntos")->setValue(12);
  mailing->Wait();
  QCOMPARE(mailing.desktop.database.Query(u"SELECT codEtiqueta, Puntos FROM EtiquetasImpresion"),
           QStringList(u"1|12"_s));
  QVERIFY(mailing.Problems().contains(u"Inmaculada (336) no cabe"_s));
}

void tst_mailing_window::LettersAsFiles() {
  Mailing mailing;
  mailing->Choose("cboSeleccion", u"Colaboradores del extranjero (compartida)"_s);
  mailing->Choose("cboCarta", u"Agradecimiento de donativo"_s);
  const QString pdf = mailing.desktop.database.Path(u"cartas.pdf"_s);
  QCOMPARE(mailing->Make("actPdf", "dlgPdf", pdf), u"13 cartas en «%1»."_s.arg(pdf));
  QVERIFY(mailing->Notices().contains(u"13 van al extranjero."_s));
  mailing->Choose("cboFiltro", u"En el extranjero"_s);
  QCOMPARE(mailing->People().People().rowCount(), 14);
  for (const auto& [action, name] : {std::pair("actPdfPorPersona", u"pdf"_s), {"actRtfPorPersona", u"rtf"_s}}) {
    const QString folder = mailing.desktop.database.Path(name);
    QDir().mkpath(folder);
    QCOMPARE(mailing->Make(action, "dlgCarpeta", folder), u"13 archivos en «%1»."_s.arg(folder));
    QCOMPARE(FilesIn(folder).size(), 13);
  }
  mailing.desktop.driver.Answer(QMessageBox::Ok);
  QVERIFY(mailing->Make("actPdf", "dlgPdf", u"/proc/cartas.pdf"_s).contains(u"No se puede"_s));
  QVERIFY(mailing.Problems().contains(u"No se puede"_s));
}

/// Conditions, search, filters and boxes; what is ticked by hand stays when conditions change.
void tst_mailing_window::PeopleAreChosen() {
  Mailing mailing;
  mailing->Action("actEtiquetas").trigger();
  mailing->Choose("cboSeleccion", u"Todas las personas (compartida)"_s);
  QCOMPARE(mailing->People().People().Total(), 337);
  QVERIFY(mailing->Notices().contains(u"personas se quedan fuera: sin dirección."_s));
  mailing->Choose("cboFiltro", u"Sin dirección"_s);
  QCOMPARE(mailing->People().People().rowCount(), 12);
  mailing->Choose("cboFiltro", u"Todas"_s);
  QTest::keyClicks(mailing->Find("txtBuscarPersona"), u"ines bermudez mirador"_s);
  QCOMPARE(mailing->People().People().rowCount(), 1);
  mailing->People().selectRow(0);
  QTest::keyClick(&mailing->People(), Qt::Key_Space);
  mailing->Wait();
  QVERIFY(mailing->Text("lblPersonas").startsWith(u"336 de 337 personas"_s));
  const int ines = mailing->People().People().PersonAt(0);
  mailing->Find<QLineEdit>("txtBuscarPersona")->clear();
  mailing.desktop.driver.On("dlgCondicion", [](const support::DialogUser& dialog) {
    auto* list = dialog.Find<QListWidget>("lstValores");
    list->findItems(u"Madrid"_s, Qt::MatchExactly).constFirst()->setCheckState(Qt::Checked);
    dialog.Dialog()->accept();
  });
  mailing->Trigger("actProvincias");
  const int inMadrid =
      mailing.desktop.database.Id(u"SELECT COUNT(*) AS N FROM Colaboradores WHERE Eliminado=0 AND CodProvincia=28");
  QCOMPARE(mailing->People().People().Total(), inMadrid);
  const int row = mailing->People().People().RowOf(ines);
  QVERIFY(row >= 0);
  QCOMPARE(mailing->People().People().index(row, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
  mailing->Press("cmdQuitarProvincias");
  QCOMPARE(mailing->People().People().Total(), 337);
  QVERIFY(mailing->Text("lblPersonas").startsWith(u"336 de 337"_s));
  mailing->Press("cmdNinguna");
  QVERIFY(mailing->Text("lblPersonas").startsWith(u"0 de 337"_s));
  QVERIFY(!mailing->Action("actPdf").isEnabled());
  QTest::keyClicks(&mailing->People(), u"garz"_s);
  QTest::qWait(QApplication::keyboardInputInterval());
  QTest::keyClick(&mailing->People(), Qt::Key_Space);
  mailing->Wait();
  QVERIFY2(mailing->Text("lblPersonas").startsWith(u"1 de 337"_s), qPrintable(mailing->Text("lblPersonas")));
  QVERIFY(mailing->Action("actPdf").isEnabled());
  mailing->Press("cmdTodas");
  QVERIFY(mailing->Text("lblPersonas").startsWith(u"337 personas"_s));
  QCOMPARE(mailing.Problems(), QString());
}

void tst_mailing_window::SelectionsAreKept() {
  Mailing mailing;
  mailing->Choose("cboSeleccion", u"Colaboradores del extranjero (compartida)"_s);
  QVERIFY(!mailing->Action("actGuardarSeleccion").isEnabled());
  mailing->People().selectRow(0);
  QTest::keyClick(&mailing->People(), Qt::Key_Space);
  mailing->Wait();
  const int person = mailing->People().People().PersonAt(0);
  mailing.desktop.driver.AnswerInput(u"Casi todas"_s);
  mailing->Trigger("actGuardarComo");
  QCOMPARE(mailing->Find<QComboBox>("cboSeleccion")->currentText(), u"Casi todas"_s);
  const QString query =
      u"SELECT P.codColaborador, P.Incluida FROM SeleccionesPersonas P INNER JOIN Selecciones S ON "
      u"P.codSeleccion=S.IDSeleccion WHERE S.Nombre='Casi todas'"_s;
  QCOMPARE(mailing.desktop.database.Query(u"{}", adodb::Verbatim{query}), QStringList(u"%1|Falso"_s.arg(person)));
  // Somebody else changes it meanwhile: what was chosen here stays, and nothing is written over.
  mailing.desktop.database.Execute(u"UPDATE Selecciones SET Condiciones='Pais=35' WHERE Nombre='Casi todas'");
  mailing->People().selectRow(1);
  QTest::keyClick(&mailing->People(), Qt::Key_Space);
  mailing->Wait();
  mailing.desktop.driver.Answer(QMessageBox::Ok);
  mailing->Trigger("actGuardarSeleccion");
  QVERIFY(mailing.Problems().contains(u"mientras tanto"_s));
  QVERIFY(mailing->Text("lblPersonas").startsWith(u"12 de 14"_s));
  mailing.desktop.driver.Answer(QMessageBox::Yes);
  mailing->Choose("cboSeleccion", u"Casi todas"_s);
  mailing->Trigger("actCompartida");
  QCOMPARE(mailing->Find<QComboBox>("cboSeleccion")->currentText(), u"Casi todas (compartida)"_s);
  mailing.desktop.driver.Answer(QMessageBox::Yes);
  mailing->Trigger("actEliminarSeleccion");
  QCOMPARE(mailing->Find<QComboBox>("cboSeleccion")->findText(u"Casi todas (compartida)"_s), -1);
  mailing.desktop.TakeBoxes();
}

/// A shared selection of somebody else's is used and not changed; one that asks for what is gone is told.
void tst_mailing_window::SelectionsOfOthers() {
  Mailing mailing;
  mailing.Window().close();
  mailing.desktop.Session().userId = 7;
  mailing.desktop.Session().userKind = 2;
  mailing.desktop.database.Execute(u"UPDATE TipoPublicaciones SET Eliminado=True WHERE IDTipoPublicacion=1");
  mailing.Open("actMailing");
  mailing->Choose("cboSeleccion", u"Todas las personas (compartida)"_s);
  for (const char* action : {"actCambiarNombre", "actCompartida", "actEliminarSeleccion", "actGuardarSeleccion"}) {
    QVERIFY2(!mailing->Action(action).isEnabled(), action);
  }
  QVERIFY(mailing->Action("actGuardarComo").isEnabled());
  mailing->Choose("cboSeleccion", u"Suscriptores del Boletín (compartida)"_s);
  QVERIFY(mailing->People().accessibleDescription().contains(u"publicación número 1"_s));
  QVERIFY(!mailing->Action("actPdf").isEnabled());
}

/// The list leads the preview, and leafing the list.
void tst_mailing_window::LeafingFollowsPeople() {
  Mailing mailing;
  mailing->Choose("cboSeleccion", u"Todas las personas (compartida)"_s);
  mailing->Choose("cboCarta", u"Renovación de suscripción"_s);
  auto* number = mailing->Find<QSpinBox>("numPieza");
  QTest::keyClick(&mailing.Window(), Qt::Key_F8);
  QTest::keyClick(mailing->Find("pagVista"), Qt::Key_Right);
  QCOMPARE(number->value(), 3);
  const QString name = mailing->Text("lblPersona");
  const QModelIndex current = mailing->People().currentIndex();
  QVERIFY2(name.endsWith(current.data().toString().section(u", "_s, 0, 0)), qPrintable(name));
  QTest::keyClick(&mailing.Window(), Qt::Key_F8, Qt::ShiftModifier);
  QCOMPARE(number->value(), number->maximum());
  mailing->People().setCurrentIndex(current);
  QCOMPARE(number->value(), 3);
  mailing->Choose("cboOrden", u"por código postal"_s);
  QCOMPARE(mailing->Text("lblPersona"), name);
  auto* page = mailing->Find("pagVista");
  const QImage tinted = page->grab().toImage();
  mailing->Press("chkResaltar");
  QVERIFY(page->grab().toImage() != tinted);
}

void tst_mailing_window::WhatTheLetterAsksFor() {
  Mailing mailing;
  mailing.desktop.database.Execute(
      u"UPDATE CartasModelo SET Contenido='Periodicidad: [Periodicidad del donativo]' WHERE IDCartaModelo=1");
  mailing->Choose("cboCarta", u"Certificado de donativos"_s);
  QVERIFY(mailing->Find("numEjercicio")->isVisible());
  mailing->Choose("cboCarta", u"Agradecimiento de donativo"_s);
  QVERIFY(mailing->Find("cboDonativos")->isVisible() && !mailing->Find("numEjercicio")->isVisible());
  QVERIFY(mailing->Notices().contains(u"Falta la periodicidad"_s));
  QTest::keyClicks(mailing->Find("txtPeriodicidad"), u"mensual"_s);
  mailing->Wait();
  QVERIFY(!mailing->Notices().contains(u"Falta"_s));
  // In some installations one letter may be for either.
  mailing.desktop.database.Execute(u"UPDATE configuracion SET velumar=True");
  mailing.desktop.database.Execute(
      u"UPDATE CartasModelo SET Contenido='[Importe de la suscripcion]' WHERE IDCartaModelo=1");
  mailing->Trigger("actLeerDeNuevo");
  const QString donations = mailing->Text("lblPersonas");
  mailing->Choose("cboClase", u"suscripciones"_s);
  QVERIFY(mailing->Text("lblPersonas") != donations);
  mailing->Trigger("actLeerDeNuevo");
  QCOMPARE(mailing->Find<QComboBox>("cboClase")->currentText(), u"suscripciones"_s);
}

void tst_mailing_window::FaultsAreAccepted() {
  Mailing mailing;
  mailing.desktop.database.Execute(u"UPDATE CartasModelo SET Contenido='{}' WHERE IDCartaModelo=1",
                                   u"{\\rtf1 [Nombrre]}"_s);
  mailing->Choose("cboCarta", u"Certificado de donativos"_s);
  mailing->Choose("cboCarta", u"Agradecimiento de donativo"_s);
  mailing.desktop.driver.Answer(QMessageBox::Cancel);
  mailing->Action("actPdf").trigger();
  QVERIFY(mailing.Problems().contains(u"[Nombrre]"_s));
  QVERIFY(!mailing.Window().IsBusy());
  mailing.desktop.driver.Answer(QMessageBox::Yes);
  // They are asked for once.
  for (const QString& name : {u"x.pdf"_s, u"y.pdf"_s}) {
    const QString pdf = mailing.desktop.database.Path(name);
    QVERIFY(mailing->Make("actPdf", "dlgPdf", pdf).contains(pdf));
  }
  QCOMPARE(mailing.desktop.TakeBoxes().size(), 1);
}

void tst_mailing_window::NothingToWrite() {
  Mailing mailing;
  for (const QString& table : {u"CartasModelo"_s, u"ETIQUETAS"_s, u"Selecciones"_s}) {
    mailing.desktop.database.Execute(u"UPDATE {} SET Eliminado=True", adodb::Verbatim{table});
  }
  mailing->Trigger("actLeerDeNuevo");
  QVERIFY(mailing->Text("lblSinVista").contains(u"ninguna carta modelo"_s));
  QVERIFY(!mailing->Action("actPdf").isEnabled());
  mailing->Trigger("actEtiquetas");
  QVERIFY(mailing->Text("lblSinVista").contains(u"ninguna hoja"_s));
  mailing.desktop.database.Execute(u"UPDATE CartasModelo SET Eliminado=False");
  mailing->Action("actCartas").trigger();
  mailing->Trigger("actLeerDeNuevo");
  QVERIFY(mailing->Action("actPdf").isEnabled());
  mailing.desktop.database.Execute(u"UPDATE CartasModelo SET MargenIzquierdo='30'");
  mailing->Trigger("actLeerDeNuevo");
  QVERIFY(mailing->Text("lblSinVista").contains(u"márgenes"_s));
  QCOMPARE(mailing.Problems(), QString());
}

/// The run reads anew, says how many differ, and writes nothing that nobody has seen coming.
void tst_mailing_window::ChangedMeanwhile() {
  Mailing mailing;
  mailing->Choose("cboSeleccion", u"Colaboradores del extranjero (compartida)"_s);
  mailing->Choose("cboCarta", u"Agradecimiento de donativo"_s);
  const QString pdf = mailing.desktop.database.Path(u"cambio.pdf"_s);
  const int person = mailing->People().People().PersonAt(0);
  mailing.desktop.database.Execute(u"UPDATE Colaboradores SET Nombre='Otro' WHERE IDColaborador={}", person);
  mailing.desktop.database.Execute(u"UPDATE Colaboradores SET Eliminado=True WHERE IDColaborador={}",
                                   mailing->People().People().PersonAt(1));
  const QString said = mailing->Make("actPdf", "dlgPdf", pdf);
  QVERIFY2(said.contains(u"12 cartas"_s) && said.contains(u"2 no son como"_s), qPrintable(said));
  QCOMPARE(mailing->People().People().Total(), 13);
  mailing.desktop.database.Execute(u"UPDATE CartasModelo SET Contenido='{}'", u"{\\rtf1 [Raro]}"_s);
  QFile::remove(pdf);
  mailing.desktop.driver.Answer(QMessageBox::Ok);
  QVERIFY(mailing->Make("actPdf", "dlgPdf", pdf).contains(u"[Raro]"_s));
  QVERIFY(!QFile::exists(pdf));
  mailing.desktop.TakeBoxes();
}

/// A run that is cancelled, whose window is closed, or whose program ends leaves nothing half-written.
void tst_mailing_window::Interrupted() {
  Mailing mailing;
  mailing->Choose("cboSeleccion", u"Todas las personas (compartida)"_s);
  mailing->Choose("cboCarta", u"Agradecimiento de donativo"_s);
  const QString folder = mailing.desktop.database.Path(u"salida"_s);
  QDir().mkpath(folder);
  const auto begin = [&] { mailing->Begin("actPdf", "dlgPdf", folder + u"/cartas.pdf"_s); };
  begin();
  QElapsedTimer time;
  time.start();
  QTest::mouseClick(mailing->Find<QPushButton>("cmdCancelar"), Qt::LeftButton);
  mailing->Wait();
  QVERIFY(mailing->Text("lblEstado").startsWith(u"Interrumpido"_s));
  QCOMPARE(FilesIn(folder), QStringList());
  begin();
  mailing.desktop.driver.Answer(QMessageBox::No);
  mailing.Window().close();
  QVERIFY(mailing.Window().isVisible());
  mailing->Wait();
  QCOMPARE(FilesIn(folder), QStringList(u"cartas.pdf"_s));
  QFile::remove(folder + u"/cartas.pdf"_s);
  begin();
  mailing.desktop.Restart();
  QCOMPARE(FilesIn(folder), QStringList());
  mailing.desktop.TakeBoxes();
}

void tst_mailing_window::Differing() {
  QCOMPARE(host::DifferingPieces({3, 1, 2}, {2, 3, 1}), 0);
  QCOMPARE(host::DifferingPieces({1, 2, 2}, {1, 2, 5, 6}), 2);
  QCOMPARE(host::DifferingPieces({1, 2, 3}, {}), 3);
}

void tst_mailing_window::WithoutPrinter() {
  Mailing mailing;
  bool isEnabled = true;
  mailing.desktop.driver.On("dlgImprimir", [&](const support::DialogUser& dialog) {
    isEnabled = dialog.IsEnabled("cmdImprimirYa");
    dialog.Close();
  });
  mailing->Trigger("actImprimir");
  QVERIFY(!isEnabled);
  QCOMPARE(mailing.Problems(), QString());
}

KEL_TEST(tst_mailing_window);
#include "tst_mailing_window.moc"
