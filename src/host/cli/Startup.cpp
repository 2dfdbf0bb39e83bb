#include "host/cli/Startup.h"

#include "database/Database.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace host {

using namespace Qt::StringLiterals;

namespace {

void SignIn(adodb::Connection& connection, const std::optional<int>& user, Session& session) {
  // Without a wish, an administrator: the flag is -1 for them, 0 for the others.
  const auto rows =
      user ? adodb::Execute(connection,
                            u"SELECT IDUsuario, Nombre, TipoUsuario FROM Usuarios WHERE Eliminado=0 AND IDUsuario={}",
                            *user)
           : adodb::Execute(connection,
                            u"SELECT IDUsuario, Nombre, TipoUsuario FROM Usuarios WHERE Eliminado=0 "
                            u"ORDER BY Administrador, IDUsuario");
  if (rows->AtEnd()) {
    throw automation::Error(automation::InvalidProcedureCall,
                            user ? u"El usuario %1 no existe en la base de datos."_s.arg(*user)
                                 : u"La base de datos no tiene ningún usuario."_s);
  }
  session.userId = automation::CLng(rows->Field(u"IDUsuario"));
  session.userName = automation::Text(rows->Field(u"Nombre"));
  session.userKind = automation::CLng(rows->Field(u"TipoUsuario"));
}

void ReadInstallation(adodb::Connection& connection, Session& session) {
  const auto rows = adodb::Execute(connection, u"SELECT velumar FROM configuracion");
  session.velumar = !rows->AtEnd() && automation::CBool(rows->Field(0));
}

// Beside the program where it was built, in the data folder where it was installed: the same way from both.
QString HelpFile() {
  const QFileInfo file(QCoreApplication::applicationDirPath() + u"/../share/kel/help.html"_s);
  return file.exists() ? file.canonicalFilePath() : QString();
}

QString FileOf(const CommandLine& line) {
  return QFileInfo(line.file.isEmpty() ? UsualDatabaseFile(line.demonstration) : line.file).absoluteFilePath();
}

}  // namespace

QString UsualDatabaseFile(bool demonstration) {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         (demonstration ? u"/Kel/kel-demo.db"_s : u"/Kel/kel.db"_s);
}

QString ConnectionStringOf(const CommandLine& line) {
  return line.connectionString.isEmpty() ? database::ConnectionStringForFile(FileOf(line)) : line.connectionString;
}

std::unique_ptr<StartedSession> StartSession(const CommandLine& line) {
  auto started = std::make_unique<StartedSession>();
  started->database = line.connectionString.isEmpty() ? FileOf(line) : line.connectionString;
  const QString& connectionString = started->connectionString = ConnectionStringOf(line);
  database::PrepareDatabase(connectionString,
                            line.demonstration ? database::Content::Demonstration : database::Content::Reference);
  started->connection = database::CreateConnection(connectionString);
  started->connection->Open();
  Session& session = started->session;
  session.connection = started->connection.get();
  session.title = u"Kel"_s;
  session.icon = u":/kel/kel.png"_s;
  session.helpFile = HelpFile();
  SignIn(*started->connection, line.user, session);
  ReadInstallation(*started->connection, session);
  return started;
}

}  // namespace host
