#include "database/Database.h"
#include "host/cli/Startup.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

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
  row("version", u"--version"_s, 0, u"kel-host "_s);
  row("help", u"--ayuda"_s, 0, u"--archivo F"_s);
  row("wrong argument", u"--nada"_s, 2, u"«--nada»"_s);
  row("no database", u"--archivo %1/basura"_s, 1, u"no es una base de datos"_s);
  row("folder impossible", u"--archivo %1/basura/kel.db"_s, 1, u"carpeta"_s);
  row("unknown engine", u"--base Motor=otro;Archivo=%1/x.db"_s, 1, u"otro"_s);
  row("no such library", u"registrar %1/no.so"_s, 1, u"no existe la biblioteca"_s);
  row("no component", u"registrar %1/basura"_s, 1, u"no se puede cargar"_s);
  row("forget what is not there", u"desregistrar"_s, 0, QString());
  row("dialog without component", u"abrir --archivo %1/kel.db --nodo 20 --accion agregar"_s, 1,
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
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
  environment.insert(u"HOME"_s, folder.path());
  environment.insert(u"KEL_CLASES"_s, folder.filePath(u"clases.ini"_s));
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
  const QString file = folder.filePath(u"nueva/a;b.db"_s);
  const auto started = host::StartSession(OnFile(file));
  QVERIFY(QFile::exists(file));
  QCOMPARE(started->database, file);
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

KEL_TEST(tst_program);
#include "tst_program.moc"
