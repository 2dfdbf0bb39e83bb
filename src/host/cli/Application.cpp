#include "host/cli/Application.h"

#include "database/Password.h"
#include "host/access/AccessDesk.h"
#include "host/access/SignIn.h"
#include "host/cli/DatabaseChoice.h"
#include "host/cli/FirstWindow.h"
#include "host/cli/Housekeeping.h"
#include "host/cli/PermissionNotice.h"
#include "host/cli/SettingsFile.h"
#include "host/cli/Startup.h"
#include "host/desktop/MainWindow.h"
#include "host/desktop/PasswordBox.h"
#include "host/desktop/ProgramEnd.h"
#include "host/desktop/RecentDatabases.h"
#include "host/desktop/RecordDialogs.h"
#include "host/desktop/ViewOnly.h"
#include "host/desktop/WindowMemory.h"
#include "host/help/HelpDesk.h"
#include "host/look/Look.h"
#include "host/records/ComponentBridge.h"
#include "host/records/DailyCopies.h"
#include "host/records/NodeCatalog.h"
#include "host/services/ErrorBox.h"
#include "host/services/MessageBox.h"
#include "host/services/Rescue.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"
#include "platform/process/PrivateFiles.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QScopeGuard>
#include <QSettings>
#include <QTimer>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>

namespace host {

using namespace Qt::StringLiterals;

namespace {

void PrintError(const QString& text) {
  std::fprintf(stderr, "kel-host: %s\n", text.toUtf8().constData());
}

// The toolkit ends the process when it finds no screen; its last words are English and do not say what to do.
void ExplainFatalMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type != QtFatalMsg) {
    return;
  }
  PrintError(u"No se puede abrir ninguna ventana: no hay pantalla. Compruebe la variable DISPLAY. (%1)"_s.arg(
      message.section(u'\n', 0, 0)));
  std::_Exit(ExitCannotGoOn);
}

std::unique_ptr<QApplication> CreateApplication(int& argc, char** argv) {
  const QtMessageHandler usual = qInstallMessageHandler(ExplainFatalMessage);
  const auto restore = qScopeGuard([usual] { qInstallMessageHandler(usual); });
  return std::make_unique<QApplication>(argc, argv);
}

void SetUpSpanish(QApplication& application) {
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
  auto* translator = new QTranslator(&application);
  if (translator->load(u"qtbase_es"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(translator);
  }
}

// The toolkit makes them with the mode that the mask leaves.
void KeepSettingsPrivate() {
  process::TakePrivateFile(QSettings().fileName());
  process::TakePrivateFile(Session::DefaultSettingsFile());
}

// A box on a screen that nobody sees would wait for ever.
bool HasScreen() {
  return !QStringList({u"offscreen"_s, u"minimal"_s}).contains(QGuiApplication::platformName());
}

int CannotGoOn(const QString& what, const automation::Error& error) {
  PrintError(ErrorReport(what, error));
  if (HasScreen()) {
    ShowError(nullptr, u"Kel"_s, what, error);
  }
  return ExitCannotGoOn;
}

void Notify(const QString& text) {
  PrintError(text);
  if (HasScreen()) {
    ShowMessage(QMessageBox::Warning, text, u"Kel"_s);
  }
}

int RunWindow(ComponentBridge& bridge, Rescue& rescue, AccessDesk& desk, StartedSession& started, HelpDesk& help,
              bool demonstration) {
  MainWindow window(bridge, started.connectionString,
                    {started.session.title, started.session.userName, started.place.shown, UsualDatabaseFile(false),
                     started.session.helpFile, started.session.readOnly, demonstration, !started.place.IsFile()});
  window.Offer(rescue);
  window.Offer(desk);
  QObject::connect(&window, &MainWindow::ShortcutsWanted, &help, &HelpDesk::ShowMade);
  QObject::connect(&window, &MainWindow::NextStartWanted, &window,
                   [&started](const NextStart& next) { started.next = next; });
  window.show();
  window.ChooseNode(LoadLastNode(homeNode));
  return QApplication::exec();
}

int RunDialog(ComponentBridge& bridge, const CommandLine& line) {
  const ComponentRequest request{.node = line.node, .action = line.action, .selectedId = line.id, .aux = line.aux};
  const Node* node = FindNode(line.node == cConstNodo().Sucursales() ? cConstNodo().Bancos() : line.node);
  RecordDialogs dialogs(bridge, nullptr);
  QObject::connect(&dialogs, &RecordDialogs::Told, qApp, [](const StripText& told) { Notify(told.text); });
  try {
    if (node == nullptr) {
      bridge.ShowDialog(request);
    } else {
      dialogs.Open(*node, request, {});
    }
  } catch (const automation::Error& error) {
    return CannotGoOn(u"El cuadro no se ha podido mostrar."_s, error);
  }
  return ExitDone;
}

int RunSession(const CommandLine& line, StartedSession& started, Door& door, const std::optional<Account>& account,
               bool& isOtherUserWanted) {
  RegisterClasses(started.session);
  const auto unregister = qScopeGuard([] { UnregisterClasses(); });
  const std::unique_ptr<QObject> services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  ComponentBridge bridge(*services, started.session);
  const ProgramEnd end(bridge);
  const ViewOnly viewOnly(*services, bridge);
  HelpDesk help(started.session.helpFile);
  Housekeeping housekeeping(started.connectionString, {.check = started.leftOpen,
                                                       .copy = started.place.IsFile() && !started.session.readOnly &&
                                                               !line.demonstration && WantsDailyCopies(),
                                                       .forget = !started.session.readOnly});
  QObject::connect(&housekeeping, &Housekeeping::Noticed, qApp, Notify);
  // When the window is there.
  QTimer::singleShot(0, &housekeeping, [&] {
    housekeeping.Start();
    QStringList files{automation::RegistryFile()};
    if (started.place.IsFile()) {
      files.prepend(started.place.file);
    }
    const QString notice = PermissionNotice(files);
    if (!notice.isEmpty()) {
      Notify(notice);
    }
  });
  Rescue rescue(*services, bridge);
  const QString keptFile = KeptInputFile(started.place.shown, started.session.userId);
  const auto keep = qScopeGuard([&] {
    if (!started.session.readOnly && !WriteKeptInputs(keptFile, rescue.Inputs())) {
      PrintError(u"Lo que no se guardó no se ha podido conservar en «%1»."_s.arg(keptFile));
    }
  });
  if (!started.session.readOnly) {
    const TakenInputs taken = TakeKeptInputs(keptFile);
    rescue.Add(taken.inputs);
    if (!taken.unread.isEmpty()) {
      QTimer::singleShot(0, &housekeeping, [unread = taken.unread] {
        Notify(u"Lo que quedó sin guardar la última vez no se entiende del todo. Se conserva en «%1»."_s.arg(unread));
      });
    }
  }
  AccessDesk desk(bridge, door, rescue, account, started.place.shown, started.place.IsFile());
  const int code = line.command == Command::OpenDialog
                       ? RunDialog(bridge, line)
                       : RunWindow(bridge, rescue, desk, started, help, line.demonstration);
  isOtherUserWanted = desk.IsOtherUserWanted();
  return code;
}

bool HasWindow(const CommandLine& line) {
  return line.command == Command::Window && HasScreen();
}

// One user after the other, each with a session of their own; what the last one left it for.
int RunSessions(const CommandLine& line, std::optional<NextStart>& next) {
  Door door;
  for (;;) {
    const std::unique_ptr<StartedSession> started = StartSession(line);
    if (HasWindow(line) && !line.demonstration) {
      NoteDatabase(DatabaseOf(line));
    }
    std::optional<Account> account;
    if (started->place.IsFile() && AsksForPasswords(*started->connection)) {
      const QString proposed = line.user ? started->session.userName : QString();
      account.emplace();
      if (!AskWhoWorks(started->session, door, started->place.shown, proposed, *account)) {
        return ExitDone;
      }
      UseAccount(started->session, *account);
    }
    bool isOtherUserWanted = false;
    const int code = RunSession(line, *started, door, account, isOtherUserWanted);
    if (!isOtherUserWanted) {
      next = started->next;
      return code;
    }
  }
}

// What the user left the database for.
std::optional<NextStart> RunDatabase(const CommandLine& line, int& code) {
  std::optional<FirstWindow> window;
  if (HasWindow(line)) {
    const QString who =
        QStringList({DatabaseOf(line), QString::number(line.user.value_or(0)), QSettings().fileName()}).join(u'|');
    if (!line.newWindow && FirstWindow::Show(who)) {
      code = ExitDone;
      return {};
    }
    window.emplace(who);
    QObject::connect(&*window, &FirstWindow::Wanted, qApp, ShowWindows);
  }
  std::optional<NextStart> next;
  code = RunSessions(line, next);
  return next;
}

// One database after the other, as the user leaves one for another or one can't be opened.
int RunDatabases(const CommandLine& arguments) {
  int code = ExitDone;
  std::optional<CommandLine> line = HasWindow(arguments) ? FirstDatabase(arguments) : arguments;
  while (line) {
    try {
      const std::optional<NextStart> next = RunDatabase(*line, code);
      line = next ? std::optional(PrepareNext(*next, *line)) : std::nullopt;
    } catch (const std::exception&) {
      code = CannotGoOn(u"El programa no puede empezar."_s, automation::CurrentError());
      line = HasWindow(arguments) && MayChooseDatabase(arguments) ? OtherDatabase(arguments, *line) : std::nullopt;
    }
  }
  return code;
}

}  // namespace

int RunApplication(const CommandLine& line, int& argc, char** argv) {
  const std::unique_ptr<QApplication> application = CreateApplication(argc, argv);
  KeepSettingsPrivate();
  const QString notice = PrepareSettings();
  SetUpSpanish(*application);
  QApplication::setWindowIcon(QIcon(u":/kel/kel.png"_s));
  Look look = StoredLook();
  if (line.dark) {
    look.colours = Look::Colours::Dark;
  }
  UseLook(look);
  if (!notice.isEmpty()) {
    Notify(notice);
  }
  if (HasScreen()) {
    database::SetPasswordQuestion(AskPasswordInBox);
  }
  try {
    return RunDatabases(line);
  } catch (const std::exception&) {
    return CannotGoOn(u"El programa no puede empezar."_s, automation::CurrentError());
  }
}

}  // namespace host
