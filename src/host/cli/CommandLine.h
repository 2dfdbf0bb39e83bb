#pragma once

#include "host/cli/MailingOptions.h"
#include "host/cli/MovingOptions.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace host {

/// What the program is asked to do.
enum class Command {
  Window,
  OpenDialog,
  Register,
  Unregister,
  VerifyServices,
  VerifyConnection,
  Copy,
  Restore,
  Check,
  SetUp,
  Locks,
  Users,
  Letters,
  Labels,
  Import,
  Export,
  Help,
  Version,
};

/// What usuarios does.
enum class UserAct { List, NewPassword, Administrator };

/// The program's arguments, understood.
struct CommandLine {
  Command command = Command::Window;
  QString file;              ///< --archivo; empty for the usual one.
  QString connectionString;  ///< --base; empty for the file's.
  bool create = false;       ///< --crear: the file may be a new one.
  bool newWindow = false;    ///< --nueva-ventana: beside one that has the same database open.
  bool demonstration = false;
  bool dark = false;
  std::optional<int> user;
  QString library;             ///< Of registrar, desregistrar and verificar-…; empty for desregistrar without one.
  QString progId;              ///< Of verificar-servicios and verificar-conexion.
  int limit = 20;              ///< --limite: seconds that a call of verificar-… may take.
  QString copy;                ///< Of copia and restaurar: the file of the copy.
  std::optional<int> release;  ///< Of bloqueos: the lock to release.
  UserAct userAct = UserAct::List;  ///< Of usuarios, and to whom.
  QString userName;
  MailingOptions mailing;  ///< Of cartas and etiquetas.
  MovingOptions moving;    ///< Of importar and exportar.
  int node = -1;
  int action = 0;
  int id = 0;
  int aux = 0;
};

/// Understands the arguments behind the program's name. Those that the window toolkit knows, which begin with a single
/// dash ("-platform offscreen"), are passed over. Raises automation::Error 5 with a Spanish text for a wrong one.
CommandLine ParseCommandLine(const QStringList& arguments);

/// What `--ayuda` prints.
QString CommandLineHelp();

}  // namespace host
