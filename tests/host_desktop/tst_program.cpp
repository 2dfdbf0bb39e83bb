#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "host/cli/Startup.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"
#include "support/ErrorOf.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

host::CommandLine OnFile(const QString& file) {
  host::CommandLine line;
  line.file = file;
  line.create = true;
  return line;
}

// On the test's screen, with the settings and the class registry of the folder.
void SetUp(QProcess& program, const QTemporaryDir& folder) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
  environment.insert(u"HOME"_s, folder.path());
  for (const QString& variable : {u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s}) {
    environment.remove(variable);
  }
  environment.insert(u"KEL_CLASES"_s, folder.filePath(u"clases.ini"_s));
  program.setProcessEnvironment(environment);
  program.setProcessChannelMode(QProcess::MergedChannels);
}

struct Ended {
  int code = -1;
  QString output;
};

// Runs the program with settings and class registry in `folder`, which is also `%1` in the arguments.
Ended Run(const QTemporaryDir& folder, QStringList arguments) {
  arguments.replaceInStrings(u"%1"_s, folder.path());
  QProcess program;
  SetUp(program, folder);
  program.start(QStringLiteral(KEL_HOST), arguments);
  const bool ended = program.waitForFinished(60000) && program.exitStatus() == QProcess::NormalExit;
  return {ended ? program.exitCode() : -1, QString::fromUtf8(program.readAll())};
}

QString OutputOf(const QStringList& arguments) {
  QProcess program;
  SetUp(program, QTemporaryDir());
  program.start(QStringLiteral(KEL_HOST), arguments);
  program.closeWriteChannel();
  program.waitForFinished();
  return QString::fromUtf8(program.readAll());
}

}  // namespace

/// The program as a whole: its start, its exit codes, its end by a signal.
class tst_program : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ExitCodes_data();
  void ExitCodes();
  void AMistypedPathMakesNothing();
  void WhatOthersMayChangeIsRefused();
  void CopyCheckAndRestore();
  void WhatCannotBeWrittenIsOpenedForViewing();
  void AnUncleanEndIsNoticed();
  void ALongUserNameIsCut();
  void AMissingTableIsSaidAtOnce();
  void StartCreatesTheDatabaseAndSignsIn();
  void UserOfTheArgumentsIsTaken();
  void UnknownUserIsRefused();
  void LocksOnTheCommandLine();
  void UsersOnTheCommandLine();
  void SignalsAtEveryMoment_data();
  void SignalsAtEveryMoment();
};

void tst_program::ExitCodes_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::addColumn<int>("code");
  QTest::addColumn<QString>("said");
  const auto row = [](const char* name, const QString& arguments, int code, const QString& said) {
    QTest::newRow(name) << arguments.split(u' ') << code << said;
  };
  row("version", u"--version"_s, 0, u"kel-host "_s);
  row("help", u"--ayuda"_s, 0, u"--archivo F"_s);
  row("wrong argument", u"--nada"_s, 2, u"«--nada»"_s);
  row("no database", u"--archivo %1/basura"_s, 1, u"no es una base de datos"_s);
  row("folder impossible", u"--archivo %1/basura/kel.db --crear"_s, 1, u"carpeta"_s);
  row("a file that is not there", u"--archivo %1/kel.db"_s, 1, u"«--crear»"_s);
  row("an option with one dash", u"-demo"_s, 2, u"«-demo»"_s);
  row("nothing to copy", u"copia %1/copia.db --archivo %1/kel.db"_s, 1, u"No existe la base de datos"_s);
  row("nothing to check", u"comprobar --archivo %1/basura"_s, 1, u"no es una base de datos"_s);
  row("no copy", u"restaurar %1/basura --archivo %1/kel.db --crear"_s, 1, u"no es una base de datos"_s);
  row("nowhere to restore", u"restaurar %1/basura --archivo %1/kel.db"_s, 1, u"«--crear»"_s);
  row("unknown engine", u"--base Motor=otro;Archivo=%1/x.db"_s, 1, u"otro"_s);
  row("no such library", u"registrar %1/no.so"_s, 1, u"no existe la biblioteca"_s);
  row("no component", u"registrar %1/basura"_s, 1, u"no se puede cargar"_s);
  row("forget what is not there", u"desregistrar"_s, 0, QString());
  row("dialog without component", u"abrir --crear --archivo %1/kel.db --nodo 20 --accion agregar"_s, 1,
      u"kel-host registrar"_s);
}

void tst_program::ExitCodes() {
  QFETCH(QStringList, arguments);
  QFETCH(int, code);
  QFETCH(QString, said);
  QTemporaryDir folder;
  QFile rubbish(folder.filePath(u"basura"_s));
  QVERIFY(rubbish.open(QIODevice::WriteOnly));
  rubbish.write(QByteArray(4096, 'x'));
  rubbish.close();
  arguments.replaceInStrings(u"%1"_s, folder.path());
  const Ended ended = Run(folder, arguments);
  QVERIFY2(ended.code == code, qPrintable(ended.output));
  QVERIFY2(ended.output.contains(said), qPrintable(ended.output));
}

void tst_program::AMistypedPathMakesNothing() {
  const QTemporaryDir folder;
  for (const bool create : {false, true}) {
    for (const QString& base : {QString(), u"Espera=10;Archivo="_s}) {
      host::CommandLine line = OnFile(folder.filePath(u"no/kel.db"_s));
      line.create = create;
      if (!base.isEmpty()) {
        line.connectionString = base + std::exchange(line.file, {});
      }
      QCOMPARE(support::ErrorOf([&] { host::StartSession(line); }), int(adodb::CannotOpen));
    }
  }
  host::CommandLine line = OnFile(folder.filePath(u"kel.db"_s));
  line.create = false;
  QCOMPARE(support::ErrorOf([&] { host::StartSession(line); }), int(adodb::CannotOpen));
  QVERIFY(folder.isValid() && QDir(folder.path()).isEmpty());
}

void tst_program::WhatOthersMayChangeIsRefused() {
  const QTemporaryDir folder;
  QVERIFY(QDir(folder.path()).mkpath(u"abierta"_s) && QDir(folder.path()).mkpath(u".config/Kel"_s));
  const auto allowAll = [&folder](const QString& name) {
    return QFile::setPermissions(folder.filePath(name), QFile::Permissions(0x7777));
  };
  QFile settings(folder.filePath(u".config/Kel/kel-host.conf"_s));
  QVERIFY(settings.open(QIODevice::WriteOnly) && allowAll(u"abierta"_s) && allowAll(u".config/Kel/kel-host.conf"_s));
  const Ended database = Run(folder, {u"--archivo"_s, u"%1/abierta/kel.db"_s, u"--crear"_s});
  QVERIFY2(database.code == 1 && database.output.contains(u"chmod o-w '%1/abierta'"_s.arg(folder.path())),
           qPrintable(database.output));
  QVERIFY(QDir(folder.filePath(u"abierta"_s)).isEmpty());
  const QFile::Permissions others =
      QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
  QVERIFY(!(settings.permissions() & others));
  QFile registry(folder.filePath(u"clases.ini"_s));
  QVERIFY(registry.open(QIODevice::WriteOnly) && allowAll(u"clases.ini"_s));
  for (const QString& arguments : {u"registrar "_s + QStringLiteral(KEL_COMPONENT),
                                   u"abrir --archivo %1/kel.db --crear --nodo 20 --accion agregar"_s}) {
    const Ended ended = Run(folder, arguments.split(u' '));
    QVERIFY2(ended.code == 1 && ended.output.contains(u"chmod o-w '%1/clases.ini'"_s.arg(folder.path())),
             qPrintable(ended.output));
  }
}

void tst_program::CopyCheckAndRestore() {
  const QTemporaryDir folder;
  const auto run = [&folder](const QString& arguments) {
    const Ended ended = Run(folder, arguments.split(u' '));
    return QString::number(ended.code) + u' ' + ended.output;
  };
  host::StartSession(OnFile(folder.filePath(u"kel.db"_s)));
  const QString copied = run(u"copia %1/copia.db --archivo %1/kel.db"_s);
  QVERIFY2(copied.startsWith(u"0 Copia hecha y comprobada"_s), qPrintable(copied));
  QVERIFY(run(u"copia %1/copia.db --archivo %1/kel.db"_s).startsWith(u"1 kel-host: Ya existe"_s));
  QVERIFY(run(u"comprobar --archivo %1/kel.db"_s).startsWith(u"0 Base de datos: "_s));
  host::StartSession(OnFile(folder.filePath(u"kel.db"_s)))
      ->connection->Execute(u"UPDATE Paises SET Nombre=Nombre & '%1' WHERE IDPais=7"_s.arg(QString(60, u'x')));
  QVERIFY(run(u"comprobar --archivo %1/kel.db"_s).startsWith(u"0 Base de datos: "_s));
  host::StartSession(OnFile(folder.filePath(u"kel.db"_s)))
      ->connection->Execute(u"INSERT INTO Sucursales(codProvincia) VALUES(99)"_s);
  const QString checked = run(u"comprobar --archivo %1/kel.db"_s);
  QVERIFY2(checked.startsWith(u"1 "_s), qPrintable(checked));
  QVERIFY2(checked.contains(u"Integridad: bien\nÍndices: bien\nReferencias: 1 problema\n  - Sucursales.codProvincia"_s),
           qPrintable(checked));
  QVERIFY2(checked.contains(u"Longitudes: 1 aviso\n  - Paises.Nombre"_s), qPrintable(checked));
  const QString restored = run(u"restaurar %1/copia.db --archivo %1/kel.db"_s);
  QVERIFY2(restored.startsWith(u"0 "_s) && restored.contains(u"se conserva en"_s), qPrintable(restored));
  QVERIFY(run(u"comprobar --archivo %1/kel.db"_s).startsWith(u"0 "_s));
}

void tst_program::WhatCannotBeWrittenIsOpenedForViewing() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kel.db"_s);
  const auto usual = host::StartSession(OnFile(file));
  QVERIFY(!usual->session.readOnly && !usual->leftOpen);
  host::CommandLine line;
  line.connectionString = u"Acceso=lectura;Archivo="_s + file;
  const auto started = host::StartSession(line);
  QVERIFY(started->session.readOnly);
  QVERIFY(!started->session.userName.isEmpty());
  QCOMPARE(support::ErrorOf([&] { started->connection->Execute(u"DELETE FROM Paises"_s); }),
           int(adodb::DatabaseReadOnly));
}

void tst_program::AnUncleanEndIsNoticed() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kel.db"_s);
  host::StartSession(OnFile(file));
  // What a program leaves that was killed: a log that nobody has open.
  QFile log(file + u"-wal"_s);
  QVERIFY(log.open(QIODevice::WriteOnly) && log.write(QByteArray(100, 'x')) == 100);
  log.close();
  QVERIFY(host::StartSession(OnFile(file))->leftOpen);
  QVERIFY(!host::StartSession(OnFile(file))->leftOpen);
}

void tst_program::ALongUserNameIsCut() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kel.db"_s);
  host::StartSession(OnFile(file));
  {
    const database::SqliteHandle raw(database::ConnectionString(database::ConnectionStringForFile(file)),
                                     database::SqliteHandle::Missing::Refuse);
    raw.Run("UPDATE Usuarios SET Nombre=printf('%.*c', 5000, 'x')");
  }
  QCOMPARE(host::StartSession(OnFile(file))->session.userName, QString(50, u'x'));
}

void tst_program::AMissingTableIsSaidAtOnce() {
  const QTemporaryDir folder;
  const QString made = folder.filePath(u"kel.db"_s);
  host::StartSession(OnFile(made));
  for (const QString& table : {u"Cambios"_s, u"Claves"_s, u"Ajustes"_s, u"Paises"_s}) {
    const QString file = folder.filePath(table);
    QVERIFY(QFile::copy(made, file));
    database::SqliteHandle(database::ConnectionString(database::ConnectionStringForFile(file)),
                           database::SqliteHandle::Missing::Refuse)
        .Run("DROP TABLE " + table.toLatin1());
    QCOMPARE(support::ErrorOf([&] { host::StartSession(OnFile(file)); }), int(adodb::NoSuchTable));
  }
}

void tst_program::StartCreatesTheDatabaseAndSignsIn() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"a;b.db"_s);
  const auto started = host::StartSession(OnFile(file));
  QVERIFY(QFile::exists(file));
  QCOMPARE(started->place.shown, file);
  QCOMPARE(started->session.userKind, 1);
  QVERIFY(!started->session.userName.isEmpty());
  QCOMPARE(started->session.connection, started->connection.get());
  started->connection->Execute(u"UPDATE configuracion SET velumar=-1"_s);
  QVERIFY(!started->session.velumar);
  QVERIFY(host::StartSession(OnFile(file))->session.velumar);
}

void tst_program::UserOfTheArgumentsIsTaken() {
  const QTemporaryDir folder;
  host::CommandLine line = OnFile(folder.filePath(u"kel.db"_s));
  const int administrator = host::StartSession(line)->session.userId;
  const auto first = host::StartSession(line);
  first->connection->Execute(u"INSERT INTO Usuarios(Nombre,Administrador,TipoUsuario) VALUES('ana',0,2)"_s);
  line.user = first->connection->Execute(u"SELECT MAX(IDUsuario) FROM Usuarios"_s)->Field(0).toInt();
  QCOMPARE(host::StartSession(line)->session.userName, u"ana"_s);
  line.user.reset();
  QCOMPARE(host::StartSession(line)->session.userId, administrator);
}

void tst_program::UnknownUserIsRefused() {
  const QTemporaryDir folder;
  host::CommandLine line = OnFile(folder.filePath(u"kel.db"_s));
  line.user = 999;
  try {
    host::StartSession(line);
  } catch (const automation::Error& error) {
    QVERIFY(error.Description().contains(u"999"_s));
    return;
  }
  QFAIL("signed in");
}

void tst_program::LocksOnTheCommandLine() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kel.db"_s);
  const auto started = host::StartSession(OnFile(file));
  const QStringList listing{u"bloqueos"_s, u"--archivo"_s, file};
  QCOMPARE(OutputOf(listing), u"Ningún registro está en uso.\n"_s);
  QVERIFY(!started->session.Locks().Take(u"IDPais"_s, 35));
  started->connection->Execute(u"UPDATE BloqueoRegistros SET IDBloqueoRegistro=9, Desde='2020-01-02T12:00:00Z'"_s);
  const QString table = OutputOf(listing);
  QVERIFY2(QRegularExpression(u"\\n9 +Países +España +administrador +\\S+ +02/01/2020 \\d\\d:00 +en uso\\n$"_s)
               .match(table)
               .hasMatch(),
           qPrintable(table));
  QVERIFY(OutputOf(listing + QStringList{u"soltar"_s, u"8"_s}).contains(u"número 8"_s));
  QVERIFY(OutputOf(listing + QStringList{u"soltar"_s, u"9"_s}).startsWith(u"Soltado: Países «España»."_s));
  QCOMPARE(started->session.Locks().All().size(), 0);
}

// Without a terminal the password comes as a line; here there is none.
void tst_program::UsersOnTheCommandLine() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kel.db"_s);
  const auto started = host::StartSession(OnFile(file));
  const QStringList users{u"usuarios"_s, u"--archivo"_s, file};
  QVERIFY(OutputOf(users).contains(u"sin contraseña\nNo se pide contraseña"_s));
  QVERIFY(OutputOf(users + QStringList{u"nueva-clave"_s, u"nadie"_s}).contains(u"No hay ningún usuario"_s));
  QVERIFY(OutputOf(users + QStringList{u"nueva-clave"_s, u"administrador"_s}).contains(u"al menos 8"_s));
  started->connection->Execute(u"UPDATE Usuarios SET Administrador=False, TipoUsuario=2"_s);
  QVERIFY(OutputOf(users + QStringList{u"administrador"_s, u"ADMINISTRADOR"_s}).contains(u"administra la base"_s));
  QVERIFY(OutputOf(users).contains(u"Administra "_s));
}

void tst_program::SignalsAtEveryMoment_data() {
  QTest::addColumn<QString>("arguments");
  QTest::newRow("the window") << QString();
  QTest::newRow("a dialog") << u"abrir --nodo 19 --accion agregar"_s;
  QTest::newRow("a dialog with the box of a refused lock") << u"abrir --nodo 20 --accion modificar --id 35"_s;
}

// From the first moment of the program's life to a dialog that is waiting for its user.
void tst_program::SignalsAtEveryMoment() {
  QFETCH(QString, arguments);
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kel.db"_s);
  const auto other = host::StartSession(OnFile(file));
  other->session.userId = 99;
  QVERIFY(!other->session.Locks().Take(u"IDPais"_s, 35));
  QFile registry(folder.filePath(u"clases.ini"_s));
  QVERIFY(registry.open(QIODevice::WriteOnly));
  registry.write("KelConfiguracion.CPrincipal=" KEL_COMPONENT "\n");
  registry.close();
  const int numbers[] = {SIGTERM, SIGINT, SIGHUP};
  int next = 0;
  for (const unsigned long moment : {0UL, 10UL, 30UL, 60UL, 100UL, 150UL, 200UL, 300UL, 500UL, 1200UL}) {
    QProcess program;
    SetUp(program, folder);
    program.start(QStringLiteral(KEL_HOST),
                  arguments.split(u' ', Qt::SkipEmptyParts) + QStringList{u"--archivo"_s, file});
    QVERIFY(program.waitForStarted());
    QTest::qSleep(int(moment));
    kill(pid_t(program.processId()), numbers[next++ % 3]);
    const bool ended = program.waitForFinished(30000);
    if (!ended) {
      program.kill();
      program.waitForFinished();
    }
    QVERIFY2(ended, qPrintable(u"signal %1 after %2 ms"_s.arg(numbers[(next - 1) % 3]).arg(moment)));
  }
}

KEL_TEST(tst_program);
#include "tst_program.moc"
