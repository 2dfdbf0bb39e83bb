#include "host/cli/CommandLine.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QtTest>

using namespace Qt::StringLiterals;

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
  add("copia", line.copy);
  add("usuario", line.user ? QString::number(*line.user) : QString());
  add("nodo", line.node >= 0 ? QString::number(line.node) : QString());
  add("accion", line.action != 0 ? QString::number(line.action) : QString());
  add("id", line.id != 0 ? QString::number(line.id) : QString());
  add("aux", line.aux != 0 ? QString::number(line.aux) : QString());
  add("crear", line.create ? u"1"_s : QString());
  add("demo", line.demonstration ? u"1"_s : QString());
  add("oscuro", line.dark ? u"1"_s : QString());
  const host::MailingOptions& mailing = line.mailing;
  const auto number = [&](const char* name, int value, int usual) {
    add(name, value == usual ? QString() : QString::number(value));
  };
  number("carta", mailing.letters.letter, 0);
  number("hoja", mailing.labels.sheet, 0);
  add("seleccion", mailing.letters.selection);
  number("desde", mailing.labels.start.first, 1);
  number("saltar", static_cast<int>(mailing.labels.start.skipped.size()), 0);
  add("pdf", mailing.pdf);
  add("rtf", mailing.rtfPerPerson);
  number("orden", static_cast<int>(mailing.labels.order), 0);
  number("para", static_cast<int>(mailing.letters.subject.value_or(documents::Subject::Person)), 0);
  return parts.join(u' ');
}

QString Row(Command command, const char* rest = "") {
  return (QString::number(static_cast<int>(command)) + u' ' + QLatin1StringView(rest)).trimmed();
}

}  // namespace

class tst_command_line : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ThePageOfTheManualHasEveryOption();
  void Understood_data();
  void Understood();
  void Refused_data();
  void Refused();
};

void tst_command_line::ThePageOfTheManualHasEveryOption() {
  QFile page(QStringLiteral(KEL_SOURCES) + u"/packaging/host/kel-host.1"_s);
  QVERIFY(page.open(QFile::ReadOnly));
  const auto options = [](const QString& text) {
    static const QRegularExpression option(u"--[a-z][a-z-]*[a-z]"_s);
    QStringList found;
    for (const QRegularExpressionMatch& match : option.globalMatch(text)) {
      found.append(match.captured());
    }
    found.removeDuplicates();
    found.sort();
    return found;
  };
  const QStringList said = options(host::CommandLineHelp());
  QVERIFY(said.size() > 40);
  QCOMPARE(options(QString::fromUtf8(page.readAll()).replace(u"\\-"_s, u"-"_s)), said);
}

void tst_command_line::Understood_data() {
  QTest::addColumn<QString>("arguments");
  QTest::addColumn<QString>("expected");
  QTest::newRow("nothing") << QString() << Row(Command::Window);
  QTest::newRow("file") << u"--archivo|/tmp/a b.db"_s << Row(Command::Window, "archivo=/tmp/a b.db");
  QTest::newRow("file by equals") << u"--archivo=/x=y.db"_s << Row(Command::Window, "archivo=/x=y.db");
  QTest::newRow("base") << u"--base|Motor=sqlite;Archivo=k.db|--usuario|7"_s
                        << Row(Command::Window, "base=Motor=sqlite;Archivo=k.db usuario=7");
  QTest::newRow("demo") << u"--demo|--oscuro"_s << Row(Command::Window, "demo=1 oscuro=1");
  QTest::newRow("toolkit's arguments") << u"-platform|offscreen|-reverse|--demo"_s << Row(Command::Window, "demo=1");
  QTest::newRow("dialog by name") << u"abrir|--nodo|20|--accion|Modificar|--id|35"_s
                                  << Row(Command::OpenDialog, "nodo=20 accion=2 id=35");
  QTest::newRow("branch of a bank") << u"abrir|--nodo|0|--accion|1|--aux|3"_s
                                    << Row(Command::OpenDialog, "nodo=0 accion=1 aux=3");
  QTest::newRow("register") << u"registrar|lib.so"_s << Row(Command::Register, "biblioteca=lib.so");
  QTest::newRow("copy") << u"copia|a b.db|--demo"_s << Row(Command::Copy, "copia=a b.db demo=1");
  QTest::newRow("restore") << u"restaurar|a.db|--archivo|x|--crear"_s
                           << Row(Command::Restore, "archivo=x copia=a.db crear=1");
  QTest::newRow("check") << u"comprobar"_s << Row(Command::Check);
  QTest::newRow("labels") << u"etiquetas|--hoja|2|--seleccion|a b|--desde=7|--saltar|8,15|--pdf|e.pdf|--demo"_s
                          << Row(Command::Labels, "demo=1 hoja=2 seleccion=a b desde=7 saltar=2 pdf=e.pdf");
  QTest::newRow("letters") << u"cartas|--carta|1|--seleccion|x|--rtf-por-persona|d|--orden|codigo|--para|donativos"_s
                           << Row(Command::Letters, "carta=1 seleccion=x rtf=d orden=1 para=1");
  QTest::newRow("prepare a server") << u"preparar|--base=postgresql://a/b"_s
                                    << Row(Command::SetUp, "base=postgresql://a/b");
  QTest::newRow("forget") << u"desregistrar"_s << Row(Command::Unregister);
  QTest::newRow("help wins") << u"abrir|--ayuda"_s << Row(Command::Help);
}

void tst_command_line::Understood() {
  QFETCH(QString, arguments);
  QFETCH(QString, expected);
  QCOMPARE(Describe(host::ParseCommandLine(arguments.split(u'|', Qt::SkipEmptyParts))), expected);
}

void tst_command_line::Refused_data() {
  QTest::addColumn<QString>("arguments");
  QTest::addColumn<QString>("mentioned");
  QTest::newRow("unknown option") << u"--archibo|x"_s << u"«--archibo»"_s;
  QTest::newRow("unknown option with one dash") << u"-demo"_s << u"«-demo»"_s;
  QTest::newRow("one dash alone") << u"-"_s << u"«-»"_s;
  QTest::newRow("whose password") << u"usuarios|nueva-clave"_s << u"usuarios nueva-clave NOMBRE"_s;
  QTest::newRow("unknown act on users") << u"usuarios|borrar|ana"_s << u"usuarios borrar"_s;
  QTest::newRow("no name for the copy") << u"copia"_s << u"copia ARCHIVO"_s;
  QTest::newRow("no copy to restore") << u"restaurar|--crear"_s << u"restaurar COPIA"_s;
  QTest::newRow("nothing to prepare") << u"preparar"_s << u"--base postgresql://"_s;
  QTest::newRow("too much to check") << u"comprobar|x"_s << u"«x»"_s;
  QTest::newRow("letters to nobody") << u"cartas|--carta|1|--pdf|x"_s << u"--seleccion"_s;
  QTest::newRow("letters to nowhere") << u"cartas|--carta|1|--seleccion|x"_s << u"--pdf"_s;
  QTest::newRow("letters in two places") << u"cartas|--carta|1|--seleccion|x|--pdf|x|--pdf-por-persona|d"_s
                                         << u"--pdf"_s;
  QTest::newRow("a label of a letter") << u"cartas|--carta|1|--seleccion|x|--pdf|x|--desde|2"_s << u"«etiquetas»"_s;
  QTest::newRow("no date") << u"cartas|--fecha|21/11/2026"_s << u"21/11/2026"_s;
  QTest::newRow("label 0") << u"etiquetas|--saltar|3,0"_s << u"«0»"_s;
  QTest::newRow("mailing's option elsewhere") << u"comprobar|--hoja|1"_s << u"«etiquetas»"_s;
  QTest::newRow("unknown command") << u"cerrar"_s << u"«cerrar»"_s;
  QTest::newRow("value missing") << u"--archivo"_s << u"Falta el valor"_s;
  QTest::newRow("empty value") << u"--archivo="_s << u"Falta el valor"_s;
  QTest::newRow("flag with value") << u"--demo=1"_s << u"no lleva ningún valor"_s;
  QTest::newRow("no number") << u"--usuario|ana"_s << u"«ana»"_s;
  QTest::newRow("too big") << u"--usuario|9999999999"_s << u"número entero"_s;
  QTest::newRow("file and base") << u"--archivo|a|--base|b"_s << u"no las dos"_s;
  QTest::newRow("no library") << u"registrar"_s << u"Falta la biblioteca"_s;
  QTest::newRow("too much") << u"registrar|a|b"_s << u"«b»"_s;
  QTest::newRow("dialog without node") << u"abrir|--accion|1"_s << u"«--nodo»"_s;
  QTest::newRow("node without dialog") << u"abrir|--nodo|24|--accion|1"_s << u"24"_s;
  QTest::newRow("unknown node") << u"abrir|--nodo|7|--accion|1"_s << u"7"_s;
  QTest::newRow("heading cannot be added") << u"abrir|--nodo|36|--accion|1"_s << u"solo se puede modificar"_s;
  QTest::newRow("deletion is no dialog") << u"abrir|--nodo|20|--accion|3"_s << u"«3»"_s;
  QTest::newRow("modify nothing") << u"abrir|--nodo|20|--accion|2"_s << u"«--id»"_s;
  QTest::newRow("dialog's option for the window") << u"--nodo|20"_s << u"«abrir»"_s;
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
