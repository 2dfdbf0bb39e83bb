#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QtTest>

using namespace Qt::StringLiterals;

using automation::Call;
using automation::Ref;

namespace {

constexpr int bank = 5;

// Breaks lines itself, as a rich-text editor does.
class LetterBox : public QTextEdit {
 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return) {
      textCursor().insertBlock();
    } else {
      QTextEdit::keyPressEvent(event);
    }
  }
};

// A dialog as the component makes them: it asks for the lock while it loads, has what was refused blocked, asks
// whether something changed when it closes, and releases what it holds.
class BankDialog : public QDialog {
 public:
  BankDialog() : m_services(automation::CreateObject(u"KelAPI.cPrincipal"_s)) {
    setObjectName(u"frmBanco"_s);
    auto* layout = new QVBoxLayout(this);
    Add(*layout, new QLineEdit, u"txtNombre"_s)->setText(u"Banco Uno"_s);
    Add(*layout, new QPlainTextEdit, u"txtNotas"_s)->setPlainText(u"notas"_s);
    Add(*layout, new LetterBox, u"rtfCarta"_s)->setPlainText(u"carta"_s);
    connect(new QShortcut(QKeySequence(u"Ctrl+S"_s), this), &QShortcut::activated, this, [this] { ++saved; });
    auto* list = Add(*layout, new QComboBox, u"cboProvincia"_s);
    list->addItems({u"Soria"_s, u"Teruel"_s});
    Add(*layout, new QCheckBox(u"Activo"_s), u"chkActivo"_s);
    auto* grid = Add(*layout, new QTableView, u"msgSucursales"_s);
    grid->setModel(new QStandardItemModel(2, 2, this));
    m_modify = Add(*layout, new QPushButton(u"Modificar"_s), u"cmdBanco_1"_s);
    auto* accept = Add(*layout, new QPushButton(u"Aceptar"_s), u"cmdBanco_3"_s);
    auto* cancel = Add(*layout, new QPushButton(u"Cancelar"_s), u"cmdBanco_4"_s);
    cancel->setProperty("SirveEnConsulta", true);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    if (Call(m_services.get(), "BloqueoRegistro", nullptr, objectName(), u"IDBanco"_s, bank, Ref(m_held)).toBool()) {
      Call(m_services.get(), "BloquearControles", accept);
    }
    setWindowTitle(u"Propiedades de Banco Uno"_s);
    Call(m_services.get(), "establecercontrolcambioformulario", Controls());
  }

  ~BankDialog() override {
    if (m_held) {
      Call(m_services.get(), "DesbloqueoRegistro", nullptr, objectName(), u"IDBanco"_s, bank);
    }
  }

  // What a grid's handler does when a row is chosen.
  void ChooseRow() { m_modify->setEnabled(true); }
  int saved = 0;
  bool Changed() { return Call(m_services.get(), "controlcambioformulario", Controls()).toBool(); }

 private:
  template <typename Control>
  Control* Add(QLayout& layout, Control* control, const QString& name) {
    control->setObjectName(name);
    layout.addWidget(control);
    return control;
  }
  QObjectList Controls() {
    const QList<QWidget*> widgets = findChildren<QWidget*>();
    return {widgets.begin(), widgets.end()};
  }

  std::unique_ptr<QObject> m_services;
  QPushButton* m_modify = nullptr;
  bool m_held = false;
};

}  // namespace

/// A record that somebody else holds can be looked at, and nothing else.
class tst_read_only : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    m_desktop = std::make_unique<TestDesktop>();
    m_desktop->Session().showRefusedLocks = false;
    FakeComponent::Register([](adodb::Connection&, int) { BankDialog().exec(); });
  }

  void cleanup() { m_desktop.reset(); }

  void EverythingCanBeReadAndNothingChanged() {
    LockElsewhere();
    m_desktop->driver.On("frmBanco", [](const support::DialogUser& dialog) {
      QCOMPARE(dialog.Dialog()->windowTitle(), u"Propiedades de Banco Uno (solo lectura)"_s);
      QCOMPARE(dialog.Text("readOnlyReason"), u"Lo está modificando «blas» en «pc3»."_s);
      QTest::keyClicks(dialog.Find("txtNombre"), u"x"_s);
      QTest::keyClicks(dialog.Find("txtNotas"), u"x"_s);
      QTest::keyClick(dialog.Find("cboProvincia"), Qt::Key_Down);
      QTest::keyClicks(dialog.Find("cboProvincia"), u"teruel"_s);
      QTest::keyClicks(dialog.Find("rtfCarta"), u"x"_s);
      QTest::keyClick(dialog.Find("rtfCarta"), Qt::Key_Return);
      QTest::keyClick(dialog.Dialog(), Qt::Key_S, Qt::ControlModifier);
      QCOMPARE(static_cast<BankDialog*>(dialog.Dialog())->saved, 0);
      QCOMPARE(dialog.Find<QTextEdit>("rtfCarta")->toPlainText(), u"carta"_s);
      QCOMPARE(dialog.Text("txtNombre"), u"Banco Uno"_s);
      QCOMPARE(dialog.Find<QPlainTextEdit>("txtNotas")->toPlainText(), u"notas"_s);
      QCOMPARE(dialog.Text("cboProvincia"), u"Soria"_s);

      auto* name = dialog.Find<QLineEdit>("txtNombre");
      name->selectAll();
      QTest::keySequence(name, QKeySequence::Copy);
      QCOMPARE(QApplication::clipboard()->text(), u"Banco Uno"_s);
      QTest::keySequence(dialog.Find("cboProvincia"), QKeySequence::Copy);
      QCOMPARE(QApplication::clipboard()->text(), u"Soria"_s);

      // The dialog itself may enable what depends on its grid.
      static_cast<BankDialog*>(dialog.Dialog())->ChooseRow();
      for (const char* off : {"chkActivo", "cmdBanco_1", "cmdBanco_3"}) {
        QVERIFY2(!dialog.IsEnabled(off), off);
      }
      QVERIFY(dialog.IsEnabled("msgSucursales"));
      QSignalSpy keys(dialog.Find<QTableView>("msgSucursales"), &QTableView::activated);
      QTest::keyClick(dialog.Find("msgSucursales"), Qt::Key_Return);
      QCOMPARE(keys.size(), 0);

      name->setText(u"por programa"_s);
      QVERIFY(!static_cast<BankDialog*>(dialog.Dialog())->Changed());
      dialog.Press("cmdBanco_4");
    });
    m_desktop->Bridge().ShowDialog({});
    QCOMPARE(m_desktop->TakeBoxes(), QStringList());
    QCOMPARE(FakeComponent::Requests().size(), 1);
    QCOMPARE(m_desktop->database.Id(u"SELECT codUsuario FROM BloqueoRegistros"), 7);
  }

  void AFreeRecordIsAsEver() {
    m_desktop->driver.On("frmBanco", [](const support::DialogUser& dialog) {
      QCOMPARE(dialog.Dialog()->windowTitle(), u"Propiedades de Banco Uno"_s);
      dialog.Type("txtNombre", u"Otro"_s);
      QTest::keyClick(dialog.Dialog(), Qt::Key_S, Qt::ControlModifier);
      QCOMPARE(static_cast<BankDialog*>(dialog.Dialog())->saved, 1);
      QVERIFY(static_cast<BankDialog*>(dialog.Dialog())->Changed());
      dialog.Press("cmdBanco_4");
    });
    m_desktop->Bridge().ShowDialog({});
    QCOMPARE(m_desktop->TakeBoxes(), QStringList());
  }

  // Once the other one has let go the dialog is opened anew, on what that one left, and nobody can come in between.
  void TryingAgain() {
    LockElsewhere();
    m_desktop->driver.On("frmBanco", [&](const support::DialogUser& dialog) {
      dialog.Press("readOnlyRetry");
      QCOMPARE(dialog.Text("readOnlyReason"), u"Sigue sin estar libre. Lo está modificando «blas» en «pc3»."_s);
      m_desktop->database.Execute(u"DELETE FROM BloqueoRegistros");
      m_desktop->database.Execute(u"UPDATE Bancos SET Eliminado=-1");
      dialog.Press("readOnlyRetry");
      QCOMPARE(dialog.Text("readOnlyReason"), u"El registro está eliminado."_s);
      QVERIFY(dialog.Dialog()->isVisible());
      m_desktop->database.Execute(u"UPDATE Bancos SET Eliminado=0");
      dialog.Press("readOnlyRetry");
    });
    m_desktop->driver.On("frmBanco", [&](const support::DialogUser& dialog) {
      QCOMPARE(dialog.Dialog()->windowTitle(), u"Propiedades de Banco Uno"_s);
      QVERIFY(dialog.IsEnabled("cmdBanco_3"));
      QCOMPARE(m_desktop->database.Query(u"SELECT campoID, ValorID, Usuario FROM BloqueoRegistros"),
               QStringList(u"IDBanco|5|ana"_s));
      dialog.Press("cmdBanco_4");
    });
    m_desktop->Bridge().ShowDialog({});
    QCOMPARE(m_desktop->TakeBoxes(), QStringList());
    QCOMPARE(FakeComponent::Requests().size(), 2);
    QCOMPARE(m_desktop->database.Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
  }

  // The record may be gone when the dialog wants to load it: then nothing holds the lock that was taken for it.
  void TheSecondOpeningFails() {
    LockElsewhere();
    m_desktop->driver.On("frmBanco", [&](const support::DialogUser& dialog) {
      m_desktop->database.Execute(u"DELETE FROM BloqueoRegistros");
      FakeComponent::Register([](adodb::Connection&, int) { throw automation::Error(3021); });
      dialog.Press("readOnlyRetry");
    });
    QVERIFY_THROWS_EXCEPTION(automation::Error, m_desktop->Bridge().ShowDialog({}));
    QCOMPARE(m_desktop->database.Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
  }

 private:
  void LockElsewhere() const {
    m_desktop->database.Execute(u"INSERT INTO Bancos(IDBanco,Nombre) VALUES(5,'Banco Uno')");
    m_desktop->database.Execute(
        u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario, Equipo) VALUES (7, 'IDBanco', 5, "
        u"'blas', 'pc3')");
  }

  std::unique_ptr<TestDesktop> m_desktop;
};

KEL_TEST(tst_read_only);
#include "tst_read_only.moc"
