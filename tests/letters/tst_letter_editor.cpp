#include "letters/editor/FieldMenu.h"
#include "letters/editor/LetterEdit.h"
#include "letters/editor/RecoveryFile.h"
#include "support/Expect.h"

#include <QAction>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

using letters::LetterEdit;
using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

const QString hello = u"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs24 \\'bfD\\'f3nde? [Nombre]\\par l'any\\par}"_s;

LetterEdit* Letter(const DialogUser& dialog) {
  return dialog.Find<LetterEdit>("rtfCarta");
}

void Do(const DialogUser& dialog, const char* item) {
  dialog.Find<QAction>(item)->trigger();
}

/// A host with a printer and a folder of its own for letters that could not be saved.
class Office : public TestHost {
 public:
  Office() {
    platform.printers = 1;
    qputenv("XDG_DATA_HOME", Path(u"datos"_s).toUtf8());
  }

  int AddLetter(const QString& name, const QString& content, const QString& margins = u"2,5"_s) {
    Query(
        u"INSERT INTO CartasModelo (Nombre, Contenido, MargenIzquierdo, MargenDerecho) VALUES "
        u"('{0}','{1}','{2}','{2}')",
        name, content, margins);
    return Id(u"SELECT MAX(IDCartaModelo) AS N FROM CartasModelo");
  }
};

}  // namespace

class tst_letter_editor : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void OpensALetter() {
    Office host;
    const int id = host.AddLetter(u"Carta d'abril"_s, hello);
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de Carta d'abril"_s);
      QCOMPARE(Letter(dialog)->toPlainText(), u"¿Dónde? [Nombre]\nl'any"_s);
      dialog.Screenshot(u"/tmp/letters-open.png"_s);
      Do(dialog, "mnuArchivoGuardar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
    qDebug() << host.connection().Log();
  }
};

KEL_TEST(tst_letter_editor);
#include "tst_letter_editor.moc"
