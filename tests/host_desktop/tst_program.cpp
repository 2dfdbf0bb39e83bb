#include "database/Database.h"
#include "host/cli/Startup.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

host::CommandLine OnFile(const QString& file) {
  host::CommandLine line;
  line.file = file;
  return line;
}

}  // namespace

/// The program as a whole: its start, its exit codes, its end by a signal.
class tst_program : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ExitCodes_data();
  void ExitCodes();
  void StartCreatesTheDatabaseAndSignsIn();
  void UserOfTheArgumentsIsTaken();
  void UnknownUserIsRefused();
};

void tst_program::ExitCodes_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::addColumn<int>("code");
  QTest::addColumn<QString>("said");
  const auto row = [](const char* name, const QString& arguments, int code, const QString& said) {
    QTest::newRow(name) << arguments.split(u' ') << code << said;
  };
  row("version", QStringLiteral("--version"), 0, QStringLiteral("kel-host "));
  row("help", QStringLiteral("--ayuda"), 0, QStringLiteral("--archivo F"));
  row("wrong argument", QStringLiteral("--nada"), 2, QStringLiteral("«--nada»"));
  row("no database", QStringLiteral("--archivo %1/basura"), 1, QStringLiteral("no es una base de datos"));
  row("folder impossible", QStringLiteral("--archivo %1/basura/kel.db"), 1, QStringLiteral("carpeta"));
  row("unknown engine", QStringLiteral("--base Motor=otro;Archivo=%1/x.db"), 1, QStringLiteral("otro"));
  row("no such library", QStringLiteral("registrar %1/no.so"), 1, QStringLiteral("no existe la biblioteca"));
  row("no component", QStringLiteral("registrar %1/basura"), 1, QStringLiteral("no se puede cargar"));
  row("forget what is not there", QStringLiteral("desregistrar"), 0, QString());
  row("dialog without component", QStringLiteral("abrir --archivo %1/kel.db --nodo 20 --accion agregar"), 1,
      QStringLiteral("kel-host registrar"));
}

void tst_program::ExitCodes() {
  QFETCH(QStringList, arguments);
  QFETCH(int, code);
  QFETCH(QString, said);
  QTemporaryDir folder;
  QFile rubbish(folder.filePath(QStringLiteral("basura")));
  QVERIFY(rubbish.open(QIODevice::WriteOnly));
  rubbish.write(QByteArray(4096, 'x'));
  rubbish.close();
  arguments.replaceInStrings(QStringLiteral("%1"), folder.path());
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  environment.insert(QStringLiteral("HOME"), folder.path());
  environment.insert(QStringLiteral("KEL_CLASES"), folder.filePath(QStringLiteral("clases.ini")));
  program.setProcessEnvironment(environment);
  program.setProcessChannelMode(QProcess::MergedChannels);
  program.start(QStringLiteral(KEL_HOST), arguments);
  QVERIFY(program.waitForFinished(60000));
  const QString output = QString::fromUtf8(program.readAll());
  QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == code, qPrintable(output));
  QVERIFY2(output.contains(said), qPrintable(output));
}

void tst_program::StartCreatesTheDatabaseAndSignsIn() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("nueva/a;b.db"));
  const auto started = host::StartSession(OnFile(file));
  QVERIFY(QFile::exists(file));
  QCOMPARE(started->database, file);
  QCOMPARE(started->session.userKind, 1);
  QVERIFY(!started->session.userName.isEmpty());
  QCOMPARE(started->session.connection, started->connection.get());
  started->connection->Execute(QStringLiteral("UPDATE configuracion SET velumar=-1"));
  QVERIFY(!started->session.velumar);
  QVERIFY(host::StartSession(OnFile(file))->session.velumar);
}

void tst_program::UserOfTheArgumentsIsTaken() {
  const QTemporaryDir folder;
  host::CommandLine line = OnFile(folder.filePath(QStringLiteral("kel.db")));
  const int administrator = host::StartSession(line)->session.userId;
  const auto first = host::StartSession(line);
  first->connection->Execute(
      QStringLiteral("INSERT INTO Usuarios(Nombre,Administrador,TipoUsuario) VALUES('ana',0,2)"));
  line.user = first->connection->Execute(QStringLiteral("SELECT MAX(IDUsuario) FROM Usuarios"))->Field(0).toInt();
  QCOMPARE(host::StartSession(line)->session.userName, QStringLiteral("ana"));
  line.user.reset();
  QCOMPARE(host::StartSession(line)->session.userId, administrator);
}

void tst_program::UnknownUserIsRefused() {
  const QTemporaryDir folder;
  host::CommandLine line = OnFile(folder.filePath(QStringLiteral("kel.db")));
  line.user = 999;
  try {
    host::StartSession(line);
  } catch (const automation::Error& error) {
    QVERIFY(error.Description().contains(QStringLiteral("999")));
    return;
  }
  QFAIL("signed in");
}

KEL_TEST(tst_program);
#include "tst_program.moc"
