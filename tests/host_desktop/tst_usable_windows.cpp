#include "TestDesktop.h"
#include "support/DesktopFile.h"
#include "support/TestProgram.h"
#include "support/WindowFaults.h"

#include "host/access/Door.h"
#include "host/access/LockBox.h"
#include "host/access/NewPassword.h"
#include "host/access/ServerUsersDialog.h"
#include "host/access/SignIn.h"
#include "host/access/UserDialog.h"
#include "host/access/UsersDialog.h"
#include "host/calibration/CalibrationDialog.h"
#include "host/desktop/PasswordBox.h"
#include "host/help/HelpDesk.h"
#include "host/help/HelpWindow.h"
#include "host/look/Look.h"
#include "host/mailing/window/ConditionDialogs.h"
#include "host/mailing/window/EnvelopeDialog.h"
#include "host/mailing/window/MailingWindow.h"
#include "host/mailing/window/PrintDialog.h"
#include "host/moving/window/MovingAssistant.h"
#include "host/records/NodeCatalog.h"
#include "platform/contract/cConstNodo.h"

#include <QAbstractItemView>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>

#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

using host::Look;
using support::DialogUser;

namespace {

const QString manual = QStringLiteral(KEL_SOURCES) + u"/docs/ayuda/contenido.html"_s;

/// A button on which nothing is seen, as an icon that is not there leaves it; a ground that shades down is nothing.
bool IsBlank(QWidget& button) {
  constexpr int edge = 4;
  const QImage seen =
      button.grab(button.rect().adjusted(edge, edge, -edge, -edge)).toImage().convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < seen.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(seen.constScanLine(y));
    if (std::any_of(line, line + seen.width(), [line](QRgb pixel) { return pixel != *line; })) {
      return false;
    }
  }
  return true;
}

/// The program's windows one after the other, in one look.
class Walk {
 public:
  explicit Walk(int percent) : m_percent(percent) {}

  QStringList Faults() {
    EveryNode();
    Details();
    MailingWindow();
    HelpWindow();
    Dialogs();
    Access();
    Import();
    return m_faults + m_desktop.TakeBoxes();
  }

 private:
  void LookAt(QWidget& window, const QString& name) {
    for (const QString& fault : support::WindowFaults(window)) {
      m_faults.append(name + u" | "_s + fault);
    }
    const QSize smallest = window.minimumSizeHint().expandedTo(window.minimumSize());
    if (m_percent <= 150 && smallest != smallest.boundedTo({1024, 600})) {
      m_faults.append(
          u"%1 | no room on a small screen: %2x%3"_s.arg(name).arg(smallest.width()).arg(smallest.height()));
    }
    for (QToolButton* button : window.findChildren<QToolButton*>()) {
      if (button->isVisible() && IsBlank(*button)) {
        m_faults.append(u"%1 | nothing is on %2 (%3)"_s.arg(name, button->objectName(), button->text()));
      }
    }
  }

  void LookAtDialog(const char* name, const std::function<void()>& open) {
    m_desktop.driver.On(name, [&](const DialogUser& dialog) {
      LookAt(*dialog.Dialog(), QString::fromUtf8(name));
      dialog.Close();
    });
    open();
  }

  // Beside the main one.
  template <typename Window>
  Window& Opened(const char* action) {
    m_desktop.Action(action).trigger();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* opened = qobject_cast<Window*>(window); opened != nullptr && opened->isVisible()) {
        return *opened;
      }
    }
    throw support::Failure("no window after", QString::fromUtf8(action));
  }

  void EveryNode() {
    m_desktop.Window();
    m_desktop.ChooseNode(host::homeNode);
    const auto* office = m_desktop.Window().findChild<QLabel*>(u"lblOffice"_s);
    QVERIFY(QTest::qWaitFor([&] { return office->text().contains(u"·"_s); }));
    LookAt(m_desktop.Window(), u"Inicio"_s);
    // The pane below the list comes when it comes: it is looked at by itself.
    m_desktop.Action("actDetail").setChecked(false);
    for (const host::Node& node : host::NodesFor(true)) {
      m_desktop.ChooseNode(node.id);
      LookAt(m_desktop.Window(), node.title);
    }
  }

  // Each awaited by a part of it that has to come.
  void Details() {
    m_desktop.Action("actDetail").setChecked(true);
    m_desktop.Window().resize(1024, 900);
    for (const auto& [node, part] :
         {std::pair(cConstNodo().Presentadores(), "lblDetailUses"), std::pair(cConstNodo().Provincias(), "detailKinds"),
          std::pair(cConstNodo().CartasModelo(), "lblDetailText"), std::pair(cConstNodo().Etiquetas(), "detailList")}) {
      m_desktop.ChooseNode(node);
      m_desktop.List().selectRow(0);
      const auto* awaited = m_desktop.Window().findChild<QWidget*>(QString::fromUtf8(part));
      QVERIFY2(QTest::qWaitFor([&] { return awaited->isVisible(); }), part);
      LookAt(m_desktop.Window(), QString::fromUtf8(part));
    }
  }

  void MailingWindow() {
    auto& window = Opened<host::MailingWindow>("actMailing");
    for (const char* action : {"actCartas", "actEtiquetas"}) {
      window.findChild<QAction*>(QString::fromUtf8(action))->trigger();
      QVERIFY(QTest::qWaitFor([&] { return !window.IsBusy(); }, 30'000));
      LookAt(window, QString::fromUtf8(action));
    }
    LookAtDialog("dlgVentanaSobre", [&] { host::AskForEnvelopeWindow(&window); });
    LookAtDialog("dlgCondicion", [&] { host::AskForRecords(&window, u"Provincias"_s, {{1, u"Ávila"_s}}, {}); });
    LookAtDialog("dlgFechas", [&] { host::AskForDates(&window, {}); });
    host::KnownPrinter printer;
    printer.name = u"oficina"_s;
    printer.title = u"Oficina"_s;
    printer.trays = {{u"tray-1"_s, u"Bandeja 1"_s}};
    host::PrintDialog printing({printer}, 12, true, &window);
    printing.show();
    LookAt(printing, u"dlgImprimir"_s);
    window.close();
  }

  void HelpWindow() {
    m_help.Open(QUrl::fromLocalFile(manual));
    LookAt(*m_help.Window(), u"helpWindow"_s);
  }

  void Dialogs() {
    Preferences();
    LookAtDialog("serverUsersDialog", [&] { host::ServerUsersDialog(m_desktop.Session()).exec(); });
    LookAtDialog("locksDialog", [&] { m_desktop.Action("actLocks").trigger(); });
    m_desktop.ChooseNode(cConstNodo().Bancos());
    m_desktop.List().SelectRecord(1);
    LookAtDialog("dlgExportar", [&] { m_desktop.Action("actExport").trigger(); });
    LookAtDialog("dlgImprimirLista", [&] { m_desktop.Action("actPrint").trigger(); });
    LookAtDialog("copiesDialog", [&] { m_desktop.Action("actCopies").trigger(); });
    LookAtDialog("databaseDialog", [&] { m_desktop.Action("actDatabase").trigger(); });
    LookAtDialog("historyDialog", [&] { m_desktop.Action("actHistory").trigger(); });
    LookAtDialog("passwordBox", [] { host::AskPasswordInBox(u"oficina"_s, false); });
    host::CalibrationDialog calibration(
        m_desktop.database.Connection(), u"ana"_s, {},
        {.queues = [] { return QList<host::PrintQueue>{{.name = u"a"_s, .title = u"A"_s, .trouble = {}}}; },
         .trays = [](const QString& /*queue*/) { return QList<host::PrintTray>(); },
         .print = [](const host::PrintedWork& /*work*/, const host::PrintWish& /*wish*/) {}});
    calibration.show();
    LookAt(calibration, u"calibrationDialog"_s);
  }

  void Preferences() {
    m_desktop.driver.On("preferences", [&](const DialogUser& dialog) {
      auto* pages = dialog.Dialog()->findChild<QTabWidget*>(u"tabPages"_s);
      for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        LookAt(*dialog.Dialog(), u"preferences, "_s + pages->tabText(page));
      }
      // The text's size is chosen here: also the largest one is left by it, on a small screen.
      const QSize size = dialog.Dialog()->sizeHint();
      if (size != size.boundedTo({1024, 600})) {
        m_faults.append(u"preferences | no room on a small screen: %1x%2"_s.arg(size.width()).arg(size.height()));
      }
      dialog.Close();
    });
    m_desktop.Action("actPreferences").trigger();
  }

  void Shown(QWidget& window) {
    window.show();
    LookAt(window, window.objectName());
  }

  void Access() {
    host::Door door;
    const QString place = u"/datos/oficina/kel.db"_s;
    host::UsersDialog users(m_desktop.Bridge());
    Shown(users);
    host::UserDialog user(m_desktop.Session(), {});
    Shown(user);
    host::SignIn signIn(m_desktop.Session(), door, place, u"ana"_s);
    Shown(signIn);
    host::LockBox lock(m_desktop.Session(), door, {}, place);
    m_desktop.driver.On("lockBox", [&](const DialogUser& /*dialog*/) {
      LookAt(lock, lock.objectName());
      lock.hide();
    });
    lock.exec();
    host::NewPassword password(
        {.title = u"Contraseña"_s, .text = u"Elija otra."_s, .names = {}, .asksName = true, .asksCurrent = true});
    Shown(password);
  }

  void Import() {
    support::DesktopFile file;
    file.AddTable(u"BANCOS"_s, {{u"IDBanco"_s, support::DesktopFile::Long}, {u"Nombre"_s, support::DesktopFile::Text}});
    file.AddRow({40, u"Banco del Olivar"_s});
    // To be named by hand.
    file.AddTable(u"Otras entidades"_s,
                  {{u"Clave"_s, support::DesktopFile::Long}, {u"Razón social"_s, support::DesktopFile::Text}});
    file.AddRow({7, u"Caja de la Ribera"_s});
    QFile written(m_desktop.database.Path(u"a.mdb"_s));
    QVERIFY(written.open(QIODevice::WriteOnly) && written.write(file.Bytes()) > 0);
    written.close();
    host::MovingAssistant assistant(
        {m_desktop.database.ConnectionString(), m_desktop.database.Path(u"copias"_s), 1, u"ana"_s, true, false},
        u"Kel"_s);
    Shown(assistant);
    assistant.Open(written.fileName());
    auto* next = assistant.findChild<QPushButton*>(u"cmdSiguiente"_s);
    for (const char* step : {"file", "tables", "preview"}) {
      QVERIFY2(QTest::qWaitFor([&] { return !assistant.IsBusy() && next->isEnabled(); }, 30'000), step);
      if (step == "tables"sv) {
        auto* tables = assistant.findChild<QAbstractItemView*>(u"grdTablas"_s);
        tables->setCurrentIndex(tables->model()->index(1, 0));
      }
      LookAt(assistant, u"movingAssistant, "_s + QString::fromUtf8(step));
      next->click();
    }
    LookAt(assistant, u"movingAssistant, run"_s);
    QVERIFY(QTest::qWaitFor([&] { return assistant.HasBrought(); }, 30'000));
    LookAt(assistant, u"movingAssistant, report"_s);
  }

  int m_percent;
  TestDesktop m_desktop{database::Content::Demonstration};
  host::HelpDesk m_help{manual};
  QStringList m_faults;
};

}  // namespace

/// Every window of the program for those who hear the screen, use the keyboard or need large letters.
class tst_usable_windows : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EveryWindow_data() {
    QTest::addColumn<bool>("dark");
    QTest::addColumn<int>("percent");
    QTest::addColumn<bool>("icons");
    QTest::newRow("light") << false << 100 << true;
    QTest::newRow("light and larger") << false << 150 << true;
    QTest::newRow("dark and large") << true << 200 << true;
    QTest::newRow("without icons") << false << 100 << false;
  }

  void EveryWindow() {
    QFETCH(bool, dark);
    QFETCH(int, percent);
    QFETCH(bool, icons);
    const QStringList themes = QIcon::themeSearchPaths();
    // By itself this platform looks for themes nowhere.
    QIcon::setThemeSearchPaths(icons ? QStringList(u"/usr/share/icons"_s) : QStringList());
    qputenv("CUPS_SERVER", "/nowhere/cups.sock");
    host::UseLook({.colours = dark ? Look::Colours::Dark : Look::Colours::Light, .textPercent = percent});
    const QStringList faults = Walk(percent).Faults();
    QVERIFY(QIcon::fromTheme(u"list-add"_s).isNull() != icons);
    QIcon::setThemeSearchPaths(themes);
    host::UseLook({});
    for (const QString& fault : faults) {
      QTest::qFail(qPrintable(fault), __FILE__, __LINE__);
    }
  }
};

KEL_TEST(tst_usable_windows);
#include "tst_usable_windows.moc"
