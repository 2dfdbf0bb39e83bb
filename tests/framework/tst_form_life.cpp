#include "framework/FormularioMantenimiento.h"
#include "framework/Plataforma.h"
#include "framework/SolicitudAnidada.h"
#include "framework/Terminacion.h"
#include "platform/automation/ClassRegistry.h"
#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <csignal>

using automation::Error;
using support::agregar;
using support::DialogUser;
using support::modificar;
using support::nuevo;
using support::TestHost;

namespace {

// A dialog that keeps a diary of its life.
class Diary : public FormularioMantenimiento {
 public:
  explicit Diary(QStringList& entries)
      : FormularioMantenimiento({QStringLiteral("frmDiario"), QStringLiteral("IDPais"), 12104, 12103}),
        m_entries(entries) {
    m_entries.append(QStringLiteral("initialize"));
  }
  ~Diary() override { m_entries.append(QStringLiteral("terminate")); }

  std::function<bool(Diary&)> load = [](Diary&) { return true; };
  std::function<void(Diary&)> accept = [](Diary& form) { form.Unload(); };
  using FormularioMantenimiento::BloquearRegistro;
  using FormularioMantenimiento::DevolverNuevo;
  QLineEdit* text = nullptr;

 protected:
  void CrearControles() override {
    m_entries.append(QStringLiteral("controls"));
    auto* layout = new QVBoxLayout(this);
    text = new QLineEdit;
    m_accept = new QPushButton;
    m_grid = new QTableWidget(1, 2);
    text->setObjectName("texto");
    m_accept->setObjectName("cmd_0");
    m_grid->setObjectName("msg");
    layout->addWidget(text);
    layout->addWidget(m_accept);
    layout->addWidget(m_grid);
    On(m_accept, &QPushButton::clicked, [this] {
      m_entries.append(QStringLiteral("accept"));
      accept(*this);
    });
  }
  bool Cargar() override {
    m_entries.append(QStringLiteral("load"));
    return load(*this);
  }
  void Form_Activate() override { m_entries.append(QStringLiteral("activate")); }
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override {
    m_entries.append(QStringLiteral("query %1").arg(mode));
    FormularioMantenimiento::Form_QueryUnload(cancel, mode);
  }
  void Form_Unload() override {
    m_entries.append(QStringLiteral("unload"));
    FormularioMantenimiento::Form_Unload();
  }
  QAbstractButton* BotonAceptar() const override { return m_accept; }
  QTableView* Rejilla() const override { return m_grid; }

 private:
  QStringList& m_entries;
  QPushButton* m_accept = nullptr;
  QTableWidget* m_grid = nullptr;
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
    m_host->connection().Open();
    objApi() = ServiciosHost(&m_host->services());
    m_host->services().setProperty("Accion", agregar);
    m_entries.clear();
  }
  void cleanup() {
    QCOMPARE(m_host->driver.TakeProblems(), QStringList());
    objApi() = ServiciosHost();
    m_host.reset();
  }

  void EventsInOrderAndASecondLife() {
    {
      Diary form(m_entries);
      for (int i = 0; i < 2; ++i) {
        m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
          QCOMPARE(dialog.Text("texto"), QString());
          dialog.Type("texto", QStringLiteral("algo"));
          dialog.Press("cmd_0");
        });
        form.ShowModal();
        QVERIFY(!form.IsLoaded());
      }
    }
    const QString life = QStringLiteral("controls load activate accept query 1 unload ");
    QCOMPARE(m_entries.join(u' '), QStringLiteral("initialize ") + life + life + QStringLiteral("terminate"));
  }

  void LoadedBeforeItIsShown() {
    Diary form(m_entries);
    form.Load();
    QVERIFY(form.IsLoaded() && !form.isVisible() && !form.ErrorCarga());
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) { dialog.Close(); });
    form.ShowModal();
    QCOMPARE(m_entries.count(QStringLiteral("load")), 1);
  }

  void RefusedAndFailedLoadsAreNotShown() {
    Diary form(m_entries);
    form.load = [](Diary&) { return false; };
    form.ShowModal();
    form.load = [](Diary& diary) -> bool {
      diary.BloquearRegistro();
      throw Error(3021);
    };
    m_host->services().setProperty("Accion", modificar);
    m_host->services().setProperty("IDSeleccionado", 35);
    m_host->driver.Answer(QMessageBox::Ok);
    form.ShowModal();
    QVERIFY(m_host->driver.TakeBoxes().join(u' ').contains(QStringLiteral("Error 3021: ")));
    QVERIFY(form.ErrorCarga());
    QVERIFY(!m_entries.contains(QStringLiteral("activate")));
    // The lock that the load had taken does not stay behind.
    QCOMPARE(m_host->Query(QStringLiteral("SELECT * FROM BloqueoRegistros")), QStringList());
  }

  void ErrorsEndTheFormAndReachTheCaller() {
    Diary form(m_entries);
    form.accept = [](Diary&) { throw Error(1234, QStringLiteral("propio")); };
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Type("texto", QStringLiteral("algo"));
      dialog.Press("cmd_0");
    });
    QVERIFY_THROWS_EXCEPTION(Error, form.ShowModal());
    QVERIFY(!form.IsLoaded());
    QCOMPARE(m_entries.last(), QStringLiteral("unload"));
    QVERIFY(!m_entries.join(u' ').contains(QStringLiteral("query")));
  }

  void ErrorOfAcceptPressedByThePrompt() {
    Diary form(m_entries);
    form.accept = [](Diary&) { throw Error(1234, QStringLiteral("propio")); };
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Type("texto", QStringLiteral("algo"));
      dialog.Close();
    });
    m_host->driver.Answer(QMessageBox::Yes);
    QVERIFY_THROWS_EXCEPTION(Error, form.ShowModal());
    QCOMPARE(m_entries.count(QStringLiteral("unload")), 1);
  }

  void ErrorsOfTheUnloadAreShownAndStopNothing() {
    Diary form(m_entries);
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      automation::UnregisterClass(QStringLiteral("KelAPI.cPrincipal"));
      dialog.Press("cmd_0");
    });
    m_host->driver.Answer(QMessageBox::Ok);
    form.ShowModal();
    QVERIFY(!form.IsLoaded());
    const QStringList boxes = m_host->driver.TakeBoxes();
    QVERIFY2(boxes.value(0).startsWith(QStringLiteral("Prueba|critico|Error 429: ")), qPrintable(boxes.join(u' ')));
  }

  void ColumnWidthsComeBack() {
    m_host->services().setProperty("PathNodo", QStringLiteral("Tablas\\Prueba"));
    for (const int expected : {0, 321}) {
      Diary form(m_entries);
      m_host->driver.On("frmDiario", [expected](const DialogUser& dialog) {
        auto* grid = dialog.Find<QTableWidget>("msg");
        if (expected != 0) {
          QCOMPARE(grid->columnWidth(1), expected);
        }
        grid->setColumnWidth(1, 321);
        dialog.Press("cmd_0");
      });
      form.ShowModal();
    }
  }

  void NestedRequestRestoresTheHost() {
    m_host->services().setProperty("IDSeleccionado", 7);
    m_host->services().setProperty("IDAux", QStringLiteral("objeto"));
    {
      const SolicitudAnidada request(35);
      QCOMPARE(objApi().Accion(), nuevo);
      QCOMPARE(request.Creado(), 35);
      objApi().IDSeleccionado(99);
      objApi().IDAux(12);
      QCOMPARE(request.Creado(), 12);
    }
    QCOMPARE(objApi().Accion(), agregar);
    QCOMPARE(objApi().IDSeleccionado(), 7);
    QCOMPARE(objApi().IDAux(), QVariant(QStringLiteral("objeto")));
  }

  void EndOfSessionAndTermination_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closed");
    QTest::newRow("session, no") << int(Formulario::AppWindows) << int(QMessageBox::No) << true;
    QTest::newRow("session, cancel") << int(Formulario::AppWindows) << int(QMessageBox::Cancel) << false;
    QTest::newRow("task manager, yes") << int(Formulario::AppTaskManager) << int(QMessageBox::Yes) << true;
  }
  void EndOfSessionAndTermination() {
    QFETCH(int, mode);
    QFETCH(int, answer);
    QFETCH(bool, closed);
    Diary form(m_entries);
    m_host->driver.On("frmDiario", [&](const DialogUser& dialog) {
      dialog.Type("texto", QStringLiteral("algo"));
      QCOMPARE(Terminacion::CloseForms(Formulario::UnloadMode(mode)), closed);
      QCOMPARE(form.IsLoaded(), !closed);
      if (!closed) {
        QCOMPARE(dialog.Text("texto"), QStringLiteral("algo"));
        dialog.Press("cmd_0");
      }
    });
    m_host->driver.Answer(answer);
    form.ShowModal();
    QVERIFY(m_entries.contains(QStringLiteral("query %1").arg(mode)));
  }

  // A real signal: the nested forms close from the top down, a message box over them is dismissed, and the handler
  // that was there before hears of it once everything is closed.
  void TerminationSignal() {
    const auto before = std::signal(SIGTERM, CountSignal);
    signalsSeen = 0;
    Diary outer(m_entries);
    QStringList innerEntries;
    outer.accept = [&](Diary&) {
      Diary inner(innerEntries);
      inner.accept = [](Diary&) {
        QTimer::singleShot(0, [] { raise(SIGTERM); });
        QMessageBox box(QMessageBox::Information, QStringLiteral("t"), QStringLiteral("mensaje"));
        box.exec();
      };
      m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
        dialog.Press("cmd_0");
        QTRY_VERIFY(!dialog.Dialog()->isVisible());
      });
      inner.ShowModal();
      QCOMPARE(int(signalsSeen), 0);
    };
    m_host->driver.AnswerByClosing();
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Press("cmd_0");
      QTRY_VERIFY(!dialog.Dialog()->isVisible());
    });
    outer.ShowModal();
    std::signal(SIGTERM, before);
    QVERIFY(innerEntries.contains(QStringLiteral("query 3")));
    QVERIFY(m_entries.contains(QStringLiteral("query 3")));
    QCOMPARE(int(signalsSeen), 1);
    // Whether the signal or the driver dismissed the box first does not matter.
    m_host->driver.TakeProblems();
  }

  void HelpKeyAndWheel() {
    Diary form(m_entries);
    m_host->driver.On("frmDiario", [](const DialogUser& dialog) {
      dialog.Key(Qt::Key_F1);
      dialog.Press("cmd_0");
    });
    form.ShowModal();
    QCOMPARE(m_host->platform.helpShown.size(), 1);
  }

 private:
  std::unique_ptr<TestHost> m_host;
  QStringList m_entries;
};

KEL_TEST(tst_form_life);
#include "tst_form_life.moc"
