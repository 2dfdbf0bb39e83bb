#include "host/cli/Startup.h"

#include "database/Database.h"
#include "database/Maintenance.h"
#include "database/Presence.h"
#include "database/Schema.h"
#include "host/access/Accounts.h"
#include "host/access/ServerPeople.h"
#include "host/desktop/PatientConnection.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/process/Exposure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

namespace host {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestName = 50;
constexpr int usualKind = 2;

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
  // A file that was tampered with may hold a name of any length.
  session.userName = automation::Text(rows->Field(u"Nombre")).left(longestName);
  session.userKind = automation::CLng(rows->Field(u"TipoUsuario"));
}

void ReadInstallation(adodb::Connection& connection, Session& session) {
  const auto rows = adodb::Execute(connection, u"SELECT velumar, Identidad FROM configuracion");
  if (!rows->AtEnd()) {
    session.velumar = automation::CBool(rows->Field(0));
    session.database = automation::Text(rows->Field(1)).left(longestName);
  }
}

// The mode of the file itself is the user's choice, about which PermissionNotice has a word.
void RequireUnexposedFolder(const database::Place& place) {
  if (!place.IsFile()) {
    return;
  }
  const QFileInfo file(place.file);
  for (const QString& folder : {file.path(), file.exists() ? file.canonicalPath() : file.path()}) {
    const QString exposure = process::ExposureOf(folder);
    if (!exposure.isEmpty()) {
      throw automation::Error(adodb::CannotOpen, u"La base de datos no está a salvo. "_s + exposure);
    }
  }
}

// Otherwise one that another program took away would be missed by a save, or by a list that stays empty.
void RequireTables(adodb::Connection& connection) {
  QStringList selects;
  for (const database::Table& table : database::Schema::Current().Tables()) {
    selects.append(u"SELECT 1 FROM [%1] WHERE 1=0"_s.arg(table.name));
  }
  connection.Execute(selects.join(u" UNION ALL "_s));
}

// Beside the program where it was built, in the data folder where it was installed: the same way from both.
QString HelpFile() {
  const QFileInfo file(QCoreApplication::applicationDirPath() + u"/../share/kel/ayuda/contenido.html"_s);
  return file.exists() ? file.canonicalFilePath() : QString();
}

}  // namespace

QString UsualDatabaseFile(bool demonstration) {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         (demonstration ? u"/Kel/kel-demo.db"_s : u"/Kel/kel.db"_s);
}

Target TargetOf(const CommandLine& line) {
  Target target;
  target.connectionString = line.connectionString;
  if (target.connectionString.isEmpty()) {
    target.isUsual = line.file.isEmpty();
    const QFileInfo file(target.isUsual ? UsualDatabaseFile(line.demonstration) : line.file);
    target.connectionString = database::ConnectionStringForFile(file.absoluteFilePath());
  }
  target.place = database::PlaceOf(target.connectionString);
  return target;
}

void RequireWanted(const Target& target, const CommandLine& line) {
  const QFileInfo file(target.place.file);
  if (target.isUsual || !target.place.IsFile() || file.exists()) {
    return;
  }
  if (!line.create) {
    throw automation::Error(adodb::CannotOpen,
                            u"No existe la base de datos «%1». Compruebe el nombre; para crearla use además la opción "
                            "«--crear»."_s.arg(file.filePath()));
  }
  if (!file.dir().exists()) {
    throw automation::Error(adodb::CannotOpen,
                            u"No existe la carpeta «%1». Compruebe el nombre, o créela antes."_s.arg(file.path()));
  }
}

bool OwnsFile(const database::Place& place) {
  const uid_t user = geteuid();
  return user == 0 || QFileInfo(place.file).ownerId() == user;
}

std::unique_ptr<StartedSession> StartSession(const CommandLine& line) {
  auto started = std::make_unique<StartedSession>();
  const Target target = TargetOf(line);
  RequireWanted(target, line);
  RequireUnexposedFolder(target.place);
  Session& session = started->session;
  session.readOnly = !database::MayBeWritten(target.connectionString);
  started->place = target.place;
  started->leftOpen = database::WasLeftOpen(target.connectionString);
  QString& connectionString = started->connectionString;
  connectionString = session.readOnly ? database::ForViewing(target.connectionString) : target.connectionString;
  database::PrepareDatabase(connectionString,
                            line.demonstration ? database::Content::Demonstration : database::Content::Reference);
  auto patient = std::make_unique<PatientConnection>(
      database::CreateConnection(connectionString, PatientConnection::tryTime), database::WaitOf(connectionString));
  started->connection = std::make_unique<OfficeConnection>(std::move(patient), session);
  started->connection->Open();
  if (!session.readOnly) {
    // Nobody brings the database to another version meanwhile.
    database::OwnPresence(*started->connection);
  }
  if (target.place.IsFile()) {
    RequireTables(*started->connection);
  }
  session.connection = started->connection.get();
  session.office = started->connection.get();
  session.title = u"Kel"_s;
  session.icon = u":/kel/kel.png"_s;
  session.helpFile = HelpFile();
  SignIn(*started->connection, line.user, session);
  UseServerRole(*started->connection, session, line.user.has_value());
  if (target.place.IsFile() && !OwnsFile(target.place) && AsksForPasswords(*started->connection)) {
    // An administrator is who signs in as one.
    session.userKind = usualKind;
  }
  ReadInstallation(*started->connection, session);
  return started;
}

}  // namespace host
