#include "framework/Desktop.h"
#include "framework/MaintenanceForm.h"
#include "framework/Termination.h"
#include "platform/automation/ClassRegistry.h"
#include "support/Expect.h"

#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <csignal>

using namespace framework;
using namespace Qt::StringLiterals;

using automation::Error;
using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// A dialog that keeps a diary of its life.
class Diary : public MaintenanceForm {
 public:
  explicit Diary(QStringList& entries, FormCard card = {.name = u"frmDiario"_s,
                                                        .lock = u"IDPais"_s,
                                                        .prompt = 12104,
                                                        .errors = ErrorBox{12103}})
      : MaintenanceForm(std::move(card)), m_entries(entries) {
    m_entries.append(u"initialize"_s);
  }
  ~Diary() override { m_entries.append(u"terminate"_s); }

  std::function<bool(Diary&)> load = [](Diary&) { return true; };
  std::function<bool(Diary&)> validate = [](Diary&) { return true; };
  std::function<bool(Diary&)> write = [](Diary&) { return true; };
  std::function<void(Diary&)> query = [](Diary&) {};
  using MaintenanceForm::HandBack;
  using MaintenanceForm::LockRecord;
  using MaintenanceForm::OpenNested;
  using MaintenanceForm::Refuse;
  using MaintenanceForm::SetCaption;
  using MaintenanceForm::Trap;
  using MaintenanceForm::TrapInTransaction;

 protected:
  void CreateControls() override {
    m_entries.append(u"controls"_s);
    auto* layout = new QVBoxLayout(this);
    m_text = new QLineEdit;
    auto* accept = new QPushButton;
    auto* cancel = new QPushButton;
    m_grid = new QTableWidget(1, 2);
    m_text->setObjectName(u"texto"_s);
    accept->setObjectName(u"cmd_0"_s);
    cancel->setObjectName(u"cmd_1"_s);
    m_grid->setObjectName(u"msg"_s);
    for (QWidget* control : {static_cast<QWidget*>(m_text), static_cast<QWidget*>(accept),
                             static_cast<QWidget*>(cancel), static_cast<QWidget*>(m_grid)}) {
      layout->addWidget(control);
    }
    Buttons(accept, cancel);
    Connect();
  }
  void Connect() override {
    KeepColumnWidths(m_grid);
    SelectTextOnFocus(m_text);
    OnLeave(m_text, [this] { m_entries.append(u"left"_s); });
  }
  bool LoadRecord() override {
    m_entries.append(u"load"_s);
    return load(*this);
  }
  void OnActivate() override { m_entries.append(u"activate"_s); }
  bool Validate() override {
    m_entries.append(u"validate"_s);
    return validate(*this);
  }
  bool Write() override {
    m_entries.append(u"write"_s);
    return write(*this);
  }
  void OnQueryUnload(bool& cancel, UnloadMode mode) override {
    m_entries.append(u"query %1"_s.arg(mode));
    query(*this);
    MaintenanceForm::OnQueryUnload(cancel, mode);
  }
  void OnUnload() override {
    m_entries.append(u"unload"_s);
    MaintenanceForm::OnUnload();
  }

 private:
  QStringList& m_entries;
  QLineEdit* m_text = nullptr;
  QTableWidget* m_grid = nullptr;
};

// A host that can say its title, and nothing else.
class BareHost : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString tituloaplicacion MEMBER m_title)

 private:
  QString m_title = u"Prueba"_s;
};

// A desktop whose boxes are answered with Yes while another window has come to the front.
class BehindWindow : public Desktop {
 public:
  explicit BehindWindow(QWidget& front) : m_front(front) {}

  int MsgBox(const QString& /*text*/, int /*style*/, const QString& /*title*/) override {
    m_front.setWindowModality(Qt::ApplicationModal);
    m_front.show();
    m_front.activateWindow();
    return QTest::qWaitForWindowActive(&m_front) ? vbYes : vbCancel;
  }
  void Beep() override {}

 private:
  QWidget& m_front;
};

volatile std::sig_atomic_t signalsSeen = 0;
void CountSignal(int /*number*/) {
  signalsSeen = signalsSeen + 1;
}

}  // namespace

class tst_form_life : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    m_host = std::make_unique<TestHost>();
    m_host->Recording().Open();
    objApi() = HostServices(&m_host->services());
    m_host->services().setProperty("Accion", action.Agregar());
    m_entries.clear();
  }
  void cleanup() {
    QCOMPARE(m_host->driver.TakeProblems(), QStringList());
    objApi() = HostServices();
    m_host.reset();
  }

  void EventsInOrderAndASecondLife() {
    {
      Diary form(m_entries);
      for (int i = 0; i < 2; ++i) {
        m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
          QCOMPARE(dialog.Text("texto"), QString());
          dialog.Type("texto", u"algo"_s);
          // Enter does not leave the box; Accept takes the focus itself, before anything else.
          dialog.Key(Qt::Key_Return);
        });
        form.ShowModal();
        QVERIFY(!form.IsInUse());
      }
    }
    const QString life = u"controls load activate left validate write query 1 unload "_s;
    QCOMPARE(m_entries.join(u' '), u"initialize "_s + life + life + u"terminate"_s);
  }

  void LoadedBeforeItIsShown() {
    Diary form(m_entries);
    form.Load();
    QVERIFY(form.IsLoaded() && !form.isVisible() && !form.ErrorCarga());
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) { dialog.Close(); });
    form.ShowModal();
    QCOMPARE(m_entries.count(u"load"_s), 1);
  }

  void AFormThatIsShownIsNotShownAgain() {
    Diary form(m_entries);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      dialog.Type("texto", u"algo"_s);
      try {
        form.ShowModal();
        QFAIL("shown again");
      } catch (const Error& error) {
        QCOMPARE(error.Number(), 400);
      }
      QCOMPARE(dialog.Text("texto"), u"algo"_s);
      dialog.Press("cmd_0");
    });
    form.ShowModal();
    QCOMPARE(m_entries.count(u"load"_s), 1);
  }

  void RefusedAndFailedLoadsAreNotShown() {
    Diary form(m_entries);
    form.load = [](Diary&) { return false; };
    form.ShowModal();
    form.load = [](Diary& diary) -> bool {
      diary.LockRecord();
      throw Error(3021);
    };
    m_host->services().setProperty("Accion", action.Modificar());
    m_host->services().setProperty("IDSeleccionado", 35);
    m_host->driver.Answer(QMessageBox::Ok);
    form.ShowModal();
    QCOMPARE(m_host->driver.TakeBoxes().size(), 1);
    QVERIFY(form.ErrorCarga());
    QVERIFY(!m_entries.contains(u"activate"_s));
    // The lock that the load had taken does not stay behind, and no widths are kept.
    QCOMPARE(m_host->Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
    QVERIFY(!QFile::exists(m_host->session.settingsFile));
  }

  // One message, and no second one from an unload that asks such a host for more.
  void AHostWithoutMembersIsToldOnce() {
    BareHost host;
    objApi() = HostServices(&host);
    Diary form(m_entries);
    m_host->driver.Answer(QMessageBox::Ok);
    form.ShowModal();
    const QStringList boxes = m_host->driver.TakeBoxes();
    QCOMPARE(boxes.size(), 1);
    QVERIFY2(boxes.first().startsWith(u"Prueba|critico|Error 438: "_s), qPrintable(boxes.first()));
  }

  void ErrorsOfALoadAreToldAsTheCardSays_data() {
    QTest::addColumn<int>("policy");
    QTest::addColumn<QString>("told");
    const QString origin =
        u"Prueba|critico|El cuadro no se ha podido abrir.|propio|Error 1234\nOrigen: KelConfiguracion / "_s;
    QTest::newRow("own box") << 0 << u"Prueba|critico|Error 1234: propio"_s;
    QTest::newRow("reported") << 1 << origin + u"frmOtro / Form Load"_s;
    QTest::newRow("reported under other names") << 2 << origin + u"Emisores / Form_Load()"_s;
    QTest::newRow("let out") << 3 << QString();
  }
  void ErrorsOfALoadAreToldAsTheCardSays() {
    QFETCH(int, policy);
    QFETCH(QString, told);
    FormCard card{.name = u"frmOtro"_s};
    switch (policy) {
      case 0:
        card.errors = ErrorBox{12103};
        break;
      case 2:
        card.errors = ErrorReport{.procedure = u"Form_Load()"_s, .entity = u"Emisores"_s};
        break;
      case 3:
        card.errors = ErrorLetOut{};
        break;
      default:
        break;
    }
    Diary form(m_entries, card);
    form.load = [](Diary&) -> bool { throw Error(1234, u"propio"_s); };
    if (told.isEmpty()) {
      QVERIFY_THROWS_EXCEPTION(Error, form.ShowModal());
    } else {
      m_host->driver.Answer(QMessageBox::Ok);
      form.ShowModal();
    }
    QCOMPARE(m_host->driver.TakeBoxes().value(0), told);
    QVERIFY(!form.IsInUse());
  }

  void ErrorsEndTheFormAndReachTheCaller() {
    Diary form(m_entries);
    form.write = [](Diary&) -> bool { throw Error(1234, u"propio"_s); };
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Type("texto", u"algo"_s);
      dialog.Press("cmd_0");
    });
    QVERIFY_THROWS_EXCEPTION(Error, form.ShowModal());
    QVERIFY(!form.IsInUse() && form.isEnabled());
    QCOMPARE(m_entries.last(), u"unload"_s);
    QVERIFY(!m_entries.join(u' ').contains(u"query"_s));
  }

  void ErrorOfAcceptPressedByThePrompt() {
    Diary form(m_entries);
    form.write = [](Diary&) -> bool { throw Error(1234, u"propio"_s); };
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Type("texto", u"algo"_s);
      dialog.Close();
    });
    m_host->driver.Answer(QMessageBox::Yes);
    QVERIFY_THROWS_EXCEPTION(Error, form.ShowModal());
    QCOMPARE(m_entries.count(u"unload"_s), 1);
  }

  void AFormThatIsBeingUnloadedIsUnloadedOnce() {
    Diary form(m_entries);
    form.query = [](Diary& diary) { diary.Unload(); };
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) { dialog.Close(); });
    form.ShowModal();
    QCOMPARE(m_entries.count(u"unload"_s), 1);
  }

  void ErrorsOfTheUnloadAreShownAndStopNothing() {
    Diary form(m_entries);
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      automation::UnregisterClass(u"KelAPI.cPrincipal"_s);
      dialog.Press("cmd_0");
    });
    m_host->driver.Answer(QMessageBox::Ok);
    form.ShowModal();
    QVERIFY(!form.IsLoaded());
    const QStringList boxes = m_host->driver.TakeBoxes();
    QVERIFY2(boxes.value(0).startsWith(u"Prueba|critico|Error 429: "_s), qPrintable(boxes.join(u' ')));
  }

  void InputIsOffWhileWritingAndOnForMessages() {
    Diary form(m_entries);
    QList<bool> enabled;
    form.write = [&](Diary& diary) {
      enabled.append(diary.isEnabled());
      diary.Refuse(diary.findChild<QLineEdit*>(), 12100, vbInformation);
      enabled.append(diary.isEnabled());
      return false;
    };
    m_host->driver.Answer(QMessageBox::Ok);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      dialog.Press("cmd_0");
      QCOMPARE(enabled, (QList<bool>{false, true}));
      QCOMPARE(dialog.Focused(), u"texto"_s);
      form.write = [](Diary&) { return false; };
      dialog.Press("cmd_0");
      QVERIFY(form.isEnabled());
      dialog.Press("cmd_1");
    });
    form.ShowModal();
  }

  void ErrorsOfAcceptAreToldUnderTheCardsProcedure() {
    Diary form(m_entries, {.name = u"frmDiario"_s, .accept = u"cmd_Click"_s});
    form.validate = [](Diary&) -> bool { throw Error(1234, u"propio"_s); };
    m_host->driver.Answer(QMessageBox::Ok);
    m_host->driver.Answer(QMessageBox::Ok);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      dialog.Press("cmd_0");
      form.validate = [](Diary&) { return true; };
      form.write = [](Diary&) -> bool { throw Error(1234, u"propio"_s); };
      dialog.Press("cmd_0");
      QVERIFY(form.isEnabled());
      form.write = [](Diary&) { return true; };
      dialog.Press("cmd_0");
    });
    form.ShowModal();
    const QStringList boxes = m_host->driver.TakeBoxes();
    QCOMPARE(boxes.filter(u"KelConfiguracion / frmDiario / cmd_Click"_s), boxes);
    QCOMPARE(boxes.size(), 2);
  }

  // However Accept is reached, the box that is being edited has been left first, once, also when the form is not active
  // yet, as after its own prompt under a window manager.
  void TheBoxIsLeftOnce_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"button", "Return", "mnemonic", "Yes", "Yes to an inactive form"}) {
      QTest::newRow(way) << QString::fromUtf8(way);
    }
  }
  void TheBoxIsLeftOnce() {
    QFETCH(QString, way);
    Diary form(m_entries);
    QWidget otherWindow;
    BehindWindow behind(otherWindow);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      auto* accept = dialog.Find<QPushButton>("cmd_0");
      accept->setText(u"&Zeta"_s);
      accept->setDefault(true);
      dialog.Type("texto", u"algo"_s);
      m_entries.clear();
      if (way == u"button"_s) {
        dialog.Press("cmd_0");
      } else if (way == u"Return"_s) {
        dialog.Key(Qt::Key_Return);
      } else if (way == u"mnemonic"_s) {
        QTest::keyClick(dialog.Dialog(), Qt::Key_Z, Qt::AltModifier);
        QTRY_VERIFY(!form.IsLoaded());
      } else if (way == u"Yes"_s) {
        m_host->driver.Answer(QMessageBox::Yes);
        dialog.Close();
      } else {
        Desktop::Install(&behind);
        dialog.Close();
        Desktop::Install(&m_host->desktop);
      }
    });
    form.ShowModal();
    QStringList entries = m_entries;
    entries.removeAll(u"query 0"_s);
    entries.removeAll(u"query 1"_s);
    QCOMPARE(entries, QStringList({u"left"_s, u"validate"_s, u"write"_s, u"unload"_s}));
  }

  // Offscreen, too, where no window manager does it.
  void TheWindowBelowIsActiveAgain() {
    Diary form(m_entries);
    Diary nested(m_entries, {.name = u"frmOtro"_s});
    m_host->driver.Answer(QMessageBox::Ok);
    m_host->driver.On("frmOtro", [](const DialogUser& dialog) { dialog.Press("cmd_1"); });
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      form.Refuse(nullptr, 12100, vbInformation);
      QTRY_VERIFY(form.isActiveWindow());
      nested.ShowModal();
      QTRY_VERIFY(form.isActiveWindow());
      dialog.Press("cmd_1");
    });
    form.ShowModal();
  }

  // A trapped error is told before the transaction is rolled back.
  void TransactionsAreRolledBackAfterTheReport() {
    Diary form(m_entries, {.name = u"frmDiario"_s});
    QStringList order;
    m_host->Recording().SetHook(
        [&](const QString& entry) { order.append(entry + QString::number(m_host->driver.Boxes().size())); });
    bool failing = true;
    form.write = [&](Diary& diary) {
      return diary.TrapInTransaction(u"AgregarBD"_s, [&] {
        if (failing) {
          throw Error(1234, u"propio"_s);
        }
      });
    };
    m_host->driver.Answer(QMessageBox::Ok);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      dialog.Press("cmd_0");
      failing = false;
      dialog.Press("cmd_0");
    });
    form.ShowModal();
    // With the number of messages shown by then.
    QCOMPARE(order.join(u' '), u"BEGIN0 ROLLBACK1 BEGIN1 COMMIT1"_s);
    QVERIFY(m_host->driver.TakeBoxes().value(0).endsWith(u"frmDiario / AgregarBD"_s));
  }

  void WhatCancelHandsBack_data() {
    QTest::addColumn<int>("cancel");
    QTest::addColumn<int>("requested");
    QTest::addColumn<QVariant>("handedBack");
    for (const int requested : {int(action.Modificar()), int(action.Nuevo())}) {
      const bool nuevo = requested == action.Nuevo();
      QTest::addRow("zero, %d", requested) << int(CancelAnswer::Zero) << requested << QVariant(0);
      QTest::addRow("zero under Nuevo, %d", requested)
          << int(CancelAnswer::ZeroUnderNuevo) << requested << (nuevo ? QVariant(0) : QVariant(77));
      QTest::addRow("nothing, %d", requested) << int(CancelAnswer::Nothing) << requested << QVariant(77);
    }
  }
  void WhatCancelHandsBack() {
    QFETCH(int, cancel);
    QFETCH(int, requested);
    Diary form(m_entries, {.name = u"frmDiario"_s, .cancel = CancelAnswer(cancel)});
    m_host->services().setProperty("Accion", requested);
    m_host->services().setProperty("IDAux", 77);
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) { dialog.Press("cmd_1"); });
    form.ShowModal();
    QTEST(m_host->services().property("IDAux"), "handedBack");
  }

  void AFormWithoutAPromptNeverAsks() {
    Diary form(m_entries, {.name = u"frmDiario"_s});
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Type("texto", u"algo"_s);
      dialog.Close();
    });
    form.ShowModal();
    QVERIFY(!m_entries.contains(u"write"_s));
  }

  // What was locked is released, whatever the host has selected by then.
  void TheLockedRecordIsReleased() {
    Diary form(m_entries);
    form.load = [](Diary& diary) {
      diary.LockRecord();
      return true;
    };
    m_host->services().setProperty("IDSeleccionado", 35);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      QCOMPARE(m_host->Query(u"SELECT campoID, ValorID FROM BloqueoRegistros"), QStringList(u"IDPais|35"_s));
      m_host->services().setProperty("IDSeleccionado", 36);
      dialog.Press("cmd_0");
    });
    form.ShowModal();
    QCOMPARE(m_host->Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
  }

  // Under the title, the node's path and the dialog's name.
  void ColumnWidthsComeBack() {
    m_host->services().setProperty("PathNodo", u"Tablas\\Prueba"_s);
    for (const int expected : {0, 321}) {
      Diary form(m_entries);
      m_host->driver.On("frmDiario", [expected](const DialogUser& dialog) {
        auto* grid = dialog.Find<QTableWidget>("msg");
        if (expected != 0) {
          QCOMPARE(grid->columnWidth(0), expected);
        }
        grid->setColumnWidth(0, 321);
        dialog.Press("cmd_0");
      });
      form.ShowModal();
    }
    QTableWidget grid(1, 2);
    grid.setObjectName(u"msg"_s);
    m_host->services().CargarAnchos(&grid, u"Prueba\\Tablas\\Prueba"_s, u"frmDiario"_s);
    QCOMPARE(grid.columnWidth(0), 321);
  }

  void NestedDialogsPutTheRequestBack_data() {
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("created");
    QTest::newRow("created") << 0 << 12;
    QTest::newRow("cancelled") << 1 << 0;
    QTest::newRow("closed, leaving the parent where it was") << 2 << 0;
    QTest::newRow("load refused") << 3 << 0;
    QTest::newRow("failed") << 4 << 0;
  }
  void NestedDialogsPutTheRequestBack() {
    QFETCH(int, end);
    QFETCH(int, created);
    m_host->services().setProperty("IDNodo", 19);
    m_host->services().setProperty("IDSeleccionado", 7);
    m_host->services().setProperty("IDAux", u"objeto"_s);
    auto nested = std::make_unique<Diary>(m_entries, FormCard{.name = u"frmDiario"_s, .cancel = CancelAnswer::Nothing});
    nested->load = [end](Diary&) { return end != 3; };
    nested->write = [end](Diary& diary) {
      if (end == 4) {
        throw Error(1234);
      }
      objApi().IDSeleccionado(99);
      objApi().IDNodo(20);
      diary.HandBack(12);
      return true;
    };
    if (end != 3) {
      m_host->driver.On("frmDiario", [end](const DialogUser& dialog) {
        QCOMPARE(objApi().Accion(), int(action.Nuevo()));
        QCOMPARE(objApi().IDAuxNumber(), 35);
        end == 2 ? dialog.Close() : dialog.Press(end == 1 ? "cmd_1" : "cmd_0");
      });
    }
    Diary outer(m_entries);
    int handed = 0;
    try {
      outer.OpenNested(std::move(nested), {.idAux = 35}, [&](qint32 id) { handed = id; });
      QVERIFY(end != 4);
    } catch (const Error& error) {
      QCOMPARE(error.Number(), 1234);
    }
    QCOMPARE(handed, created);
    QCOMPARE(objApi().IDNodo(), 19);
    QCOMPARE(objApi().Accion(), int(action.Agregar()));
    QCOMPARE(objApi().IDSeleccionado(), 7);
    QCOMPARE(objApi().IDAux(), QVariant(u"objeto"_s));
  }

  void EndOfSessionAndTermination_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closed");
    QTest::newRow("session, no") << int(Form::AppWindows) << int(QMessageBox::No) << true;
    QTest::newRow("session, cancel") << int(Form::AppWindows) << int(QMessageBox::Cancel) << false;
    QTest::newRow("task manager, yes") << int(Form::AppTaskManager) << int(QMessageBox::Yes) << true;
  }
  void EndOfSessionAndTermination() {
    QFETCH(int, mode);
    QFETCH(int, answer);
    QFETCH(bool, closed);
    Diary form(m_entries);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      dialog.Type("texto", u"algo"_s);
      QCOMPARE(Termination::CloseForms(Form::UnloadMode(mode)), closed);
      QCOMPARE(form.IsLoaded(), !closed);
      if (!closed) {
        QCOMPARE(dialog.Text("texto"), u"algo"_s);
        dialog.Press("cmd_0");
      }
    });
    m_host->driver.Answer(answer);
    form.ShowModal();
    QVERIFY(m_entries.contains(u"query %1"_s.arg(mode)));
  }

  // A real signal: the nested forms close from the top down, a message box over them is dismissed, and the handler
  // that was there before hears of it once everything is closed.
  void TerminationSignal() {
    const auto before = std::signal(SIGTERM, CountSignal);
    signalsSeen = 0;
    Diary outer(m_entries);
    QStringList innerEntries;
    outer.validate = [&](Diary&) {
      Diary inner(innerEntries);
      inner.validate = [](Diary&) {
        QTimer::singleShot(0, [] { raise(SIGTERM); });
        QMessageBox box(QMessageBox::Information, u"t"_s, u"mensaje"_s);
        box.exec();
        return false;
      };
      m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
        dialog.Press("cmd_0");
        QTRY_VERIFY(!dialog.Dialog()->isVisible());
      });
      inner.ShowModal();
      [] { QCOMPARE(int(signalsSeen), 0); }();
      return false;
    };
    m_host->driver.AnswerByClosing();
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Press("cmd_0");
      QTRY_VERIFY(!dialog.Dialog()->isVisible());
    });
    outer.ShowModal();
    std::signal(SIGTERM, before);
    QVERIFY(innerEntries.contains(u"query 3"_s));
    QVERIFY(m_entries.contains(u"query 3"_s));
    QCOMPARE(int(signalsSeen), 1);
    // Whether the signal or the driver dismissed the box first does not matter.
    m_host->driver.TakeProblems();
  }

  // The user who is being asked whether to save is not asked again, and the answer counts for every signal.
  void SignalsWhileTheUserIsAsked_data() {
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("seen");
    QTest::newRow("closed without saving") << int(QMessageBox::No) << 1;
    QTest::newRow("kept") << int(QMessageBox::Cancel) << 0;
  }
  void SignalsWhileTheUserIsAsked() {
    QFETCH(int, answer);
    QFETCH(int, seen);
    const auto before = std::signal(SIGTERM, CountSignal);
    signalsSeen = 0;
    Diary form(m_entries);
    form.query = [](Diary&) {
      raise(SIGTERM);
      QCoreApplication::processEvents();
    };
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      dialog.Type("texto", u"algo"_s);
      raise(SIGTERM);
      QTRY_VERIFY(m_entries.contains(u"query 3"_s));
      form.query = [](Diary&) {};
      if (answer == QMessageBox::Cancel) {
        QVERIFY(dialog.Dialog()->isVisible());
        dialog.Press("cmd_1");
      }
    });
    m_host->driver.Answer(answer);
    form.ShowModal();
    std::signal(SIGTERM, before);
    QCOMPARE(int(signalsSeen), seen);
  }

  void HelpKeyAndCaptionToTheLetter() {
    Diary form(m_entries);
    form.load = [](Diary& diary) {
      diary.SetCaption(u"Propiedades de [*] & más"_s);
      return true;
    };
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      // What the window system is told, with the marks of a modified document resolved.
      QCOMPARE(dialog.Dialog()->windowHandle()->title(), u"Propiedades de [*] & más"_s);
      dialog.Key(Qt::Key_F1);
      dialog.Press("cmd_0");
    });
    form.ShowModal();
    QCOMPARE(m_host->desktop.helpShown.size(), 1);
  }

 private:
  std::unique_ptr<TestHost> m_host;
  QStringList m_entries;
};

KEL_TEST(tst_form_life);
#include "tst_form_life.moc"
