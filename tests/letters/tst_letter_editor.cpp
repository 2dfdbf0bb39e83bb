// The letter's record: what is asked, read, written and handed back, and what happens where that fails.

#include "LetterOffice.h"
#include "framework/Form.h"
#include "letters/editor/RecoveryFile.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;

namespace {

const QString hello = u"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs24 \\'bfD\\'f3nde? [Nombre]\\par l'any\\par}"_s;
const QString noName =
    u"Prueba|aviso|No puede dejar el nombre de la carta en blanco, si lo hace no se grabarán los datos y perderá toda "
    u"la "
    "información introducida.\n\n¿Desea teclear el nombre de la carta?"_s;
const QString longName =
    u"Prueba|aviso|El nombre de la carta no puede tener más de 50 caracteres. \n¿Desea teclear el nombre de la carta?"_s;
const QString askName = u"Prueba|entrada|Introduzca el nombre de la carta modelo."_s;
const QString exitQuestion =
    u"Prueba|informacion|Si sale del editor de cartas modelo, los cambios no se guardarán.\r\n"
    "¿Desea guardar los cambios de la carta modelo?"_s;
const QString noNumber = u"Prueba|informacion|Debe introducir un valor numérico para el margen."_s;
const QString stored = u"SELECT Nombre, Contenido, MargenIzquierdo, MargenDerecho, MargenSuperior FROM CartasModelo"_s;

}  // namespace

class tst_letter_editor : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AnUnchangedLetterIsStoredToTheCharacter() {
    LetterOffice host;
    const int id = host.AddLetter(u"Carta d'abril"_s, hello, u"3,25"_s);
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de Carta d'abril"_s);
      QCOMPARE(Letter(dialog)->toPlainText(), u"¿Dónde? [Nombre]\nl'any"_s);
      QCOMPARE(dialog.Text("txtMargenIzdo"), u"3,25"_s);
      Do(dialog, "mnuArchivoGuardar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id, 77));
    QCOMPARE(
        host.OwnStatements(),
        (QStringList{
            u"OPEN"_s, u"SELECT Tipo FROM configuracion"_s,
            u"SELECT * FROM CartasModelo WHERE IDCartaModelo=%1"_s.arg(id),
            u"UPDATE CartasModelo SET Contenido='%1', MargenIzquierdo='3,25', MargenDerecho='3,25' WHERE "
            "IDCartaModelo=%2"_s.arg(QString(hello).replace(u'\'', u"''"_s), QString::number(id)),
            u"DELETE FROM BloqueoRegistros WHERE codUsuario=1 AND campoID='IDCartaModelo' AND ValorID=%1"_s.arg(id),
            u"CLOSE"_s}));
    QCOMPARE(support::Rows(*host.Connect(), stored), QStringList(u"Carta d'abril|%1|3,25|3,25|NULL"_s.arg(hello)));
    QCOMPARE(host.services().property("IDAux"), QVariant(77));
    QCOMPARE(host.Query(u"SELECT codUsuario FROM BloqueoRegistros"), QStringList());
  }

  void AddsUnderAName() {
    LetterOffice host;
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar carta modelo"_s);
      QCOMPARE(dialog.Text("txtMargenIzdo"), u"3"_s);
      QCOMPARE(dialog.Text("cboFuentes"), u"Times New Roman"_s);
      QCOMPARE(dialog.Text("cboTamaño"), u"8"_s);
      dialog.Keys("rtfCarta", u"L'any"_s);
      dialog.Paste("txtMargenDcho", u"2.50"_s);
      dialog.Press("tlbEstandar_guardar");
    });
    host.driver.AnswerInput(u"Carta d'abril"_s);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Nuevo(), 0, 77));
    const QString content =
        u"{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang3082{\\fonttbl{\\f0\\fnil\\fcharset0 Times New "
        u"Roman;}}\r\n{\\colortbl ;}\r\n\\uc1\r\n"
        "\\pard\\plain\\f0\\fs16 L'any\\par\r\n}\r\n"_s;
    QCOMPARE(support::Rows(*host.Connect(), stored), QStringList(u"Carta d'abril|%1|3|2,5|NULL"_s.arg(content)));
    QVERIFY(host.OwnStatements()[2].startsWith(
        u"INSERT INTO CartasModelo (Nombre, Contenido, MargenIzquierdo, MargenDerecho) VALUES ('Carta d''abril','{"));
    QVERIFY(host.OwnStatements()[2].endsWith(u"','3','2,5')"));
    QCOMPARE(host.OwnStatements()[3], u"SELECT MAX(IDCartaModelo) AS maximo FROM CartasModelo "_s);
    QCOMPARE(host.services().property("IDAux").toInt(), host.Id(u"SELECT IDCartaModelo FROM CartasModelo"));
  }

  void AsksForAName_data() {
    QTest::addColumn<QStringList>("typed");  // what is typed, a cancelled box as null, and the answers to the questions
    QTest::addColumn<QString>("name");       // null for nothing written
    QTest::addColumn<QStringList>("boxes");
    const QString fifty(50, u'x');
    QTest::newRow("given up") << QStringList{QString(), u"No"_s} << QString() << QStringList{askName, noName};
    QTest::newRow("empty, then typed") << QStringList{u""_s, u"Yes"_s, u"Carta"_s} << u"Carta"_s
                                       << QStringList{askName, noName, askName};
    QTest::newRow("blanks pass after a Yes")
        << QStringList{u"  "_s, u"Yes"_s} << u"  "_s << QStringList{askName, noName};
    QTest::newRow("fifty") << QStringList{fifty} << fifty << QStringList{askName};
    QTest::newRow("fifty-one, given up") << QStringList{fifty + u'x', u"No"_s} << QString()
                                         << QStringList{askName, longName};
  }

  void AsksForAName() {
    QFETCH(QStringList, typed);
    QFETCH(QString, name);
    QFETCH(QStringList, boxes);
    LetterOffice host;
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) { Do(dialog, "mnuArchivoGuardar"); });
    for (const QString& answer : typed) {
      if (answer == u"Yes" || answer == u"No") {
        host.driver.Answer(answer == u"Yes" ? QMessageBox::Yes : QMessageBox::No);
      } else {
        host.driver.AnswerInput(answer);
      }
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Nuevo(), 0, 77));
    QCOMPARE(host.driver.TakeBoxes(), boxes);
    QCOMPARE(host.Query(u"SELECT Nombre FROM CartasModelo"), name.isNull() ? QStringList() : QStringList(name));
    QCOMPARE(host.services().property("IDAux").toInt() == 0, name.isNull());
  }

  void SaveAsKeepsTheMarginsAsTyped() {
    LetterOffice host;
    const int id = host.AddLetter(u"Carta"_s, hello);
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      dialog.Paste("txtMargenIzdo", u"2"_s);
      dialog.Keys("txtMargenIzdo", u".5"_s);
      dialog.Paste("txtMargenDcho", u"-3"_s);
      Do(dialog, "mnuArchivoGuardarComo");
    });
    host.driver.AnswerInput(u"Otra"_s);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id, 77));
    const QStringList statements = host.OwnStatements();
    QVERIFY(statements[3].startsWith(
        u"INSERT INTO CartasModelo (Nombre, Contenido, MargenDerecho, MargenIzquierdo) VALUES ('Otra','{\\rtf1"));
    QVERIFY(statements[3].endsWith(u"}','-3','2.5')"));
    QCOMPARE(statements[4], u"SELECT MAX(IDCartaModelo) AS maximo FROM CartasModelo "_s);
    QCOMPARE(host.Query(u"SELECT Nombre, MargenIzquierdo, MargenDerecho FROM CartasModelo ORDER BY IDCartaModelo"),
             (QStringList{u"Carta|2,5|2,5"_s, u"Otra|2,5|-3"_s}));
    QCOMPARE(host.services().property("IDAux").toInt(), host.Id(u"SELECT MAX(IDCartaModelo) AS N FROM CartasModelo"));
  }

  void GivingUpSaveAsStays() {
    LetterOffice host;
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      Do(dialog, "mnuArchivoGuardarComo");
      QVERIFY(dialog.Dialog()->isVisible());
      Do(dialog, "mnuArchivosalir");
    });
    host.driver.AnswerInput({});
    host.driver.Answer(QMessageBox::No);
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar(), 0, 77));
    QCOMPARE(host.driver.TakeBoxes(), (QStringList{askName, noName, exitQuestion}));
    QCOMPARE(host.services().property("IDAux"), QVariant(77));
  }

  void AMarginThatIsNoNumberKeepsTheEditorOpen() {
    LetterOffice host;
    const int id = host.AddLetter(u"Carta"_s, hello);
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      const int width = Letter(dialog)->width();
      auto* box = dialog.Find<QLineEdit>("txtMargenIzdo");
      box->setText(u"abc"_s);
      QCOMPARE(Letter(dialog)->width(), width);
      Do(dialog, "mnuArchivoGuardar");
      QVERIFY(dialog.Dialog()->isVisible());
      QCOMPARE(dialog.Focused(), u"txtMargenIzdo"_s);
      dialog.Close();
      QVERIFY(dialog.Dialog()->isVisible());
      box->setText(u"2.75"_s);
      dialog.Close();
    });
    for (const auto button : {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Yes, QMessageBox::Ok, QMessageBox::Yes}) {
      host.driver.Answer(button);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
    QCOMPARE(host.driver.TakeBoxes(), (QStringList{noNumber, noNumber, exitQuestion, noNumber, exitQuestion}));
    QCOMPARE(host.Query(u"SELECT MargenIzquierdo FROM CartasModelo"), QStringList(u"2,75"_s));
  }

  void ALockedLetterIsSavedAsAnother() {
    LetterOffice host;
    host.session.showRefusedLocks = false;
    const int id = host.AddLetter(u"Carta"_s, hello);
    host.Query(
        u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Equipo) VALUES (2, 'IDCartaModelo', {}, 'otro')",
        id);
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      QVERIFY(!dialog.Find<QAction>("mnuArchivoGuardar")->isEnabled());
      QVERIFY(!dialog.IsEnabled("tlbEstandar_guardar"));
      dialog.Keys("rtfCarta", u"Nueva "_s);
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.AnswerInput(u"Mía"_s);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
    QCOMPARE(host.Query(u"SELECT Nombre, Contenido FROM CartasModelo WHERE IDCartaModelo={}", id),
             QStringList(u"Carta|"_s + hello));
    QCOMPARE(host.Query(u"SELECT Nombre FROM CartasModelo WHERE Contenido LIKE '%Nueva%'"), QStringList(u"Mía"_s));
    QCOMPARE(host.Query(u"SELECT codUsuario FROM BloqueoRegistros"), QStringList(u"2"_s));
  }

  void ALetterThatCouldNotBeSavedIsOffered() {
    LetterOffice host;
    const int id = host.AddLetter(u"Carta"_s, hello);
    host.AddLetter(u"Otra"_s, hello);
    host.Recording().FailAt(u"UPDATE CartasModelo"_s);
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      dialog.Keys("rtfCarta", u"Trabajo "_s);
      Do(dialog, "mnuArchivoGuardar");
    });
    EXPECT_ERROR(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id), -2147467259);
    host.Recording().FailAt({});
    const auto kept = letters::FindRescued(id);
    QVERIFY(kept);
    QCOMPARE(QFileInfo(kept->file).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    QCOMPARE(QFileInfo(QFileInfo(kept->file).path()).permissions() & (QFile::ExeGroup | QFile::ExeOther),
             QFile::Permissions());

    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      QVERIFY(!dialog.IsVisible("cmdRecuperar"));
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id + 1));

    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      QCOMPARE(Letter(dialog)->toPlainText(), u"¿Dónde? [Nombre]\nl'any"_s);
      // What is typed meanwhile takes nothing of the offer away.
      dialog.Keys("rtfCarta", u"Otra cosa "_s);
      QVERIFY(dialog.IsVisible("cmdRecuperar") && dialog.IsVisible("cmdDescartar"));
      dialog.Press("cmdRecuperar");
      QCOMPARE(Letter(dialog)->toPlainText(), u"Trabajo ¿Dónde? [Nombre]\nl'any"_s);
      Do(dialog, "mnuArchivoGuardar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
    QVERIFY(host.Query(u"SELECT Contenido FROM CartasModelo WHERE IDCartaModelo={}", id)[0].contains(u"Trabajo"));
    QVERIFY(!letters::FindRescued(0));
  }

  void KeptLettersFollowNoLink() {
    const LetterOffice host;
    const QString outside = host.Path(u"fuera"_s);
    QVERIFY(letters::Rescue("uno", 1, u"Carta"_s));
    const QString kept = QFileInfo(letters::FindRescued(1)->file).path();
    QVERIFY(QDir().rename(kept, outside) && QFile::link(outside, kept));
    QVERIFY(!letters::FindRescued(1));
    QVERIFY(!letters::Rescue("dos", 2, u"Carta"_s));
    QCOMPARE(QDir(outside).entryList(QDir::Files).size(), 1);
  }

  void AMarginThatTheColumnRefusesLosesNothing() {
    LetterOffice host;
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      dialog.Keys("rtfCarta", u"Trabajo"_s);
      dialog.Find<QLineEdit>("txtMargenIzdo")->clear();
      Do(dialog, "mnuArchivoGuardarComo");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.AnswerInput(u"Carta/../x"_s);
    EXPECT_ERROR(host, host.PasarDatos(node.CartasModelo(), action.Agregar()), 13);
    const auto kept = letters::FindRescued(0);
    QVERIFY(kept);
    QCOMPARE(kept->name, u"Carta..x"_s);
    QVERIFY(letters::ReadRescued(*kept).contains("Trabajo"));
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      dialog.Press("cmdDescartar");
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
    QVERIFY(!letters::FindRescued(0));
  }

  void ExitAsksOnlyThoseWhoCanAnswer() {
    LetterOffice host;
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      dialog.Key(Qt::Key_Escape);
      QVERIFY(dialog.Dialog()->isVisible());
      dialog.Keys("rtfCarta", u"Trabajo"_s);
      static_cast<framework::Form*>(dialog.Dialog())->RequestUnload(framework::Form::AppTaskManager);
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Nuevo(), 0, 77));
    QCOMPARE(host.driver.TakeBoxes(), QStringList());
    QVERIFY(letters::FindRescued(0));
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) { Do(dialog, "mnuArchivosalir"); });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Nuevo(), 0, 77));
    QCOMPARE(host.driver.TakeBoxes(), QStringList(exitQuestion));
    QCOMPARE(host.services().property("IDAux"), QVariant(0));
    QCOMPARE(host.OwnStatements(), (QStringList{u"OPEN"_s, u"SELECT Tipo FROM configuracion"_s, u"CLOSE"_s}));
  }

  void AnUnreadableLetterIsNotOverwrittenUnasked() {
    LetterOffice host;
    const QString deep = u"{\\rtf1 "_s + QString(1'000'100, u'\\').replace(u'\\', u"\\par "_s) + u'}';
    const int id = host.AddLetter(u"Carta"_s, deep);
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      Do(dialog, "mnuArchivoGuardar");
      QVERIFY(dialog.Dialog()->isVisible());
      dialog.Close();
    });
    for (const auto button : {QMessageBox::Ok, QMessageBox::No, QMessageBox::No}) {
      host.driver.Answer(button);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
    QCOMPARE(host.Query(u"SELECT Contenido FROM CartasModelo")[0].size(), deep.size());
  }

  void ErrorsOfTheLoadReachTheHost() {
    LetterOffice host;
    EXPECT_ERROR(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), 999), 3021);
    QCOMPARE(host.Query(u"SELECT codUsuario FROM BloqueoRegistros"), QStringList());
  }
};

KEL_TEST(tst_letter_editor);
#include "tst_letter_editor.moc"
