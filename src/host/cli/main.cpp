#include "database/Password.h"
#include "host/cli/Application.h"
#include "host/cli/CommandLine.h"
#include "host/cli/DatabaseCommands.h"
#include "host/cli/LockCommand.h"
#include "host/cli/MailingCommand.h"
#include "host/cli/MovingCommand.h"
#include "host/cli/Registration.h"
#include "host/cli/UserCommand.h"
#include "host/desktop/PasswordBox.h"
#include "host/verification/Verification.h"
#include "platform/automation/Error.h"
#include "platform/process/TerminationSignals.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

void Print(FILE* stream, const QString& text) {
  std::fprintf(stream, "%s\n", text.toUtf8().constData());
}

int Run(const host::CommandLine& line, int& argc, char** argv) {
  switch (line.command) {
    case host::Command::Help:
      Print(stdout, host::CommandLineHelp().trimmed());
      return host::ExitDone;
    case host::Command::Version:
      Print(stdout, u"kel-host "_s + QCoreApplication::applicationVersion());
      return host::ExitDone;
    case host::Command::Register:
      host::RegisterComponent(line.library);
      return host::ExitDone;
    case host::Command::Unregister:
      host::UnregisterComponent(line.library);
      return host::ExitDone;
    case host::Command::VerifyServices:
    case host::Command::VerifyConnection: {
      const auto verify = line.command == host::Command::VerifyServices ? host::VerifyServices : host::VerifyConnection;
      const host::Verified verified{line.library, line.progId, std::chrono::seconds(line.limit)};
      return verify(verified, argc, argv) ? host::ExitDone : host::ExitCannotGoOn;
    }
    case host::Command::Copy:
      Print(stdout, host::CopyCommand(line));
      return host::ExitDone;
    case host::Command::Restore:
      Print(stdout, host::RestoreCommand(line));
      return host::ExitDone;
    case host::Command::SetUp:
      Print(stdout, host::SetUpCommand(line));
      return host::ExitDone;
    case host::Command::Check: {
      const host::CheckOutcome outcome = host::CheckCommand(line);
      Print(stdout, outcome.report);
      return outcome.isSound ? host::ExitDone : host::ExitCannotGoOn;
    }
    case host::Command::Locks:
      host::RunLockCommand(line);
      return host::ExitDone;
    case host::Command::Users:
      host::RunUserCommand(line);
      return host::ExitDone;
    case host::Command::Letters:
    case host::Command::Labels:
      return host::RunMailingCommand(line, argc, argv);
    case host::Command::Import:
      return host::RunImportCommand(line, argc, argv);
    case host::Command::Export:
      return host::RunExportCommand(line, argc, argv);
    default:
      return host::RunApplication(line, argc, argv);
  }
}

}  // namespace

int main(int argc, char** argv) {
  process::EndAtOnceOnSignals();
  Q_INIT_RESOURCE(desktop);
  QCoreApplication::setOrganizationName(u"Kel"_s);
  QCoreApplication::setApplicationName(u"kel-host"_s);
  QCoreApplication::setApplicationVersion(QStringLiteral(KEL_VERSION));
  QStringList arguments;
  for (int i = 1; i < argc; ++i) {
    arguments.append(QString::fromLocal8Bit(argv[i]));
  }
  host::CommandLine line;
  try {
    line = host::ParseCommandLine(arguments);
  } catch (const automation::Error& error) {
    Print(stderr, u"kel-host: %1\n«kel-host --ayuda» explica los argumentos."_s.arg(error.Description()));
    return host::ExitWrongArguments;
  }
  database::SetPasswordQuestion(host::AskPasswordOnTerminal);
  try {
    return Run(line, argc, argv);
  } catch (const automation::Error& error) {
    Print(stderr, u"kel-host: "_s + error.Description());
    return host::ExitCannotGoOn;
  }
}
