#include "host/cli/CommandLine.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QtTest>

using host::Command;
using host::CommandLine;

namespace {

// The parts of a command line that a row of a table names, as one text.
QString Describe(const CommandLine& line) {
  QStringList parts = {QString::number(static_cast<int>(line.command))};
  const auto add = [&parts](const char* name, const QString& value) {
    if (!value.isEmpty()) {
      parts.append(QLatin1StringView(name) + u'=' + value);
    }
  };
  add("archivo", line.file);
  add("base", line.connectionString);
  add("biblioteca", line.library);
  add("usuario", line.user ? QString::number(*line.user) : QString());
  add("nodo", line.node >= 0 ? QString::number(line.node) : QString());
  add("accion", line.action != 0 ? QString::number(line.action) : QString());
  add("id", line.id != 0 ? QString::number(line.id) : QString());
  add("aux", line.aux != 0 ? QString::number(line.aux) : QString());
  add("demo", line.demonstration ? QStringLiteral("1") : QString());
  add("oscuro", line.dark ? QStringLiteral("1") : QString());
  return parts.join(u' ');
}

QString Row(Command command, const char* rest = "") {
  return (QString::number(static_cast<int>(command)) + u' ' + QLatin1StringView(rest)).trimmed();
}

}  // namespace

class tst_command_line : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Understood_data();
  void Understood();
  void Refused_data();
  void Refused();
};

void tst_command_line::Understood_data() {
  QTest::addColumn<QString>("arguments");
  QTest::addColumn<QString>("expected");
  QTest::newRow("nothing") << QString() << Row(Command::Window);
  QTest::newRow("file") << QStringLiteral("--archivo|/tmp/a b.db") << Row(Command::Window, "archivo=/tmp/a b.db");
  QTest::newRow("file by equals") << QStringLiteral("--archivo=/x=y.db") << Row(Command::Window, "archivo=/x=y.db");
  QTest::newRow("base") << QStringLiteral("--base|Motor=sqlite;Archivo=k.db|--usuario|7")
                        << Row(Command::Window, "base=Motor=sqlite;Archivo=k.db usuario=7");
  QTest::newRow("demo") << QStringLiteral("--demo|--oscuro") << Row(Command::Window, "demo=1 oscuro=1");
  QTest::newRow("toolkit's arguments") << QStringLiteral("-platform|offscreen|-reverse|--demo")
                                       << Row(Command::Window, "demo=1");
  QTest::newRow("dialog by name") << QStringLiteral("abrir|--nodo|20|--accion|Modificar|--id|35")
                                  << Row(Command::OpenDialog, "nodo=20 accion=2 id=35");
  QTest::newRow("branch of a bank") << QStringLiteral("abrir|--nodo|0|--accion|1|--aux|3")
                                    << Row(Command::OpenDialog, "nodo=0 accion=1 aux=3");
  QTest::newRow("register") << QStringLiteral("registrar|lib.so") << Row(Command::Register, "biblioteca=lib.so");
  QTest::newRow("forget") << QStringLiteral("desregistrar") << Row(Command::Unregister);
  QTest::newRow("help wins") << QStringLiteral("abrir|--ayuda") << Row(Command::Help);
}

void tst_command_line::Understood() {
  QFETCH(QString, arguments);
  QFETCH(QString, expected);
  QCOMPARE(Describe(host::ParseCommandLine(arguments.split(u'|', Qt::SkipEmptyParts))), expected);
}

void tst_command_line::Refused_data() {
  QTest::addColumn<QString>("arguments");
  QTest::addColumn<QString>("mentioned");
  QTest::newRow("unknown option") << QStringLiteral("--archibo|x") << QStringLiteral("«--archibo»");
  QTest::newRow("unknown command") << QStringLiteral("cerrar") << QStringLiteral("«cerrar»");
  QTest::newRow("value missing") << QStringLiteral("--archivo") << QStringLiteral("Falta el valor");
  QTest::newRow("empty value") << QStringLiteral("--archivo=") << QStringLiteral("Falta el valor");
  QTest::newRow("flag with value") << QStringLiteral("--demo=1") << QStringLiteral("no lleva ningún valor");
  QTest::newRow("no number") << QStringLiteral("--usuario|ana") << QStringLiteral("«ana»");
  QTest::newRow("too big") << QStringLiteral("--usuario|9999999999") << QStringLiteral("número entero");
  QTest::newRow("file and base") << QStringLiteral("--archivo|a|--base|b") << QStringLiteral("no las dos");
  QTest::newRow("no library") << QStringLiteral("registrar") << QStringLiteral("Falta la biblioteca");
  QTest::newRow("too much") << QStringLiteral("registrar|a|b") << QStringLiteral("«b»");
  QTest::newRow("dialog without node") << QStringLiteral("abrir|--accion|1") << QStringLiteral("«--nodo»");
  QTest::newRow("node without dialog") << QStringLiteral("abrir|--nodo|24|--accion|1") << QStringLiteral("24");
  QTest::newRow("unknown node") << QStringLiteral("abrir|--nodo|7|--accion|1") << QStringLiteral("7");
  QTest::newRow("heading cannot be added")
      << QStringLiteral("abrir|--nodo|36|--accion|1") << QStringLiteral("solo se puede modificar");
  QTest::newRow("deletion is no dialog") << QStringLiteral("abrir|--nodo|20|--accion|3") << QStringLiteral("«3»");
  QTest::newRow("modify nothing") << QStringLiteral("abrir|--nodo|20|--accion|2") << QStringLiteral("«--id»");
  QTest::newRow("dialog's option for the window") << QStringLiteral("--nodo|20") << QStringLiteral("«abrir»");
}

void tst_command_line::Refused() {
  QFETCH(QString, arguments);
  QFETCH(QString, mentioned);
  try {
    host::ParseCommandLine(arguments.split(u'|'));
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(mentioned), qPrintable(error.Description()));
    return;
  }
  QFAIL("taken");
}

KEL_TEST(tst_command_line);
#include "tst_command_line.moc"
