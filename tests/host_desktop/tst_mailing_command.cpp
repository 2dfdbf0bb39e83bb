#include "MailingUser.h"
#include "support/PrintServer.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QProcess>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

struct Ended {
  int code = -1;
  QString said;
};

}  // namespace

/// Letters and labels from the command line: what is written, said and returned.
class tst_mailing_command : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    m_folder = m_database.Path(u"."_s) + u"/salida"_s;
    m_database.Execute(u"INSERT INTO Selecciones (IDSeleccion, Nombre, codUsuario) VALUES (77, 'Sin señas', 1)");
    m_database.Execute(
        u"INSERT INTO SeleccionesPersonas (codSeleccion, codColaborador, Incluida) VALUES (77, 321, -1)");
    m_database.Execute(u"UPDATE CartasModelo SET Contenido='{}' WHERE IDCartaModelo=2",
                       u"{\\rtf1 [Nombrre] [Nombre]}"_s);
  }
  void init() { QDir().mkpath(m_folder); }
  void cleanup() { QDir(m_folder).removeRecursively(); }
  void Ends_data();
  void Ends();
  void Printed();
  void Signalled();

 private:
  /// The program on the test's database; words stand between "|", "%1" is a folder that is empty.
  void Start(QProcess& program, const QString& arguments) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, m_database.Path(u"."_s));
    environment.remove(u"XDG_CONFIG_HOME"_s);
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(KEL_HOST), QString(arguments).replace(u"%1"_s, m_folder).split(u'|') +
                                                QStringList{u"--archivo"_s, m_database.Path()});
  }
  Ended Run(const QString& arguments) const {
    QProcess program;
    Start(program, arguments);
    const bool ended = program.waitForFinished(60'000) && program.exitStatus() == QProcess::NormalExit;
    return {ended ? program.exitCode() : -1, QString::fromUtf8(program.readAll())};
  }

  support::TestDatabase m_database{database::Content::Demonstration};
  QString m_folder;
};

void tst_mailing_command::Ends_data() {
  QTest::addColumn<QString>("arguments");
  QTest::addColumn<int>("code");
  QTest::addColumn<QStringList>("said");
  QTest::addColumn<int>("files");
  const auto row = [](const char* name, const QString& arguments, int code, const QStringList& said, int files) {
    QTest::newRow(name) << arguments << code << said << files;
  };
  const QString all = u"--seleccion|Todas las personas"_s;
  const QString abroad = u"--seleccion|Colaboradores del extranjero"_s;
  row("labels", u"etiquetas|--hoja|1|"_s + abroad + u"|--desde|7|--saltar|8,15|--pdf|%1/x.pdf"_s, 0,
      {u"14 etiquetas, 1 hojas; la última acaba en la etiqueta 22."_s}, 1);
  row("letters", u"cartas|--carta|1|"_s + abroad + u"|--rtf-por-persona|%1"_s, 0,
      {u"Se quedan fuera:\n  Garzón, Étienne (337): sin donativo"_s, u"13 archivos"_s}, 13);
  row("no such letter", u"cartas|--carta|99|"_s + all + u"|--pdf|%1/x.pdf"_s, 1, {u"número 99"_s}, 0);
  row("no such sheet", u"etiquetas|--hoja|99|"_s + all + u"|--pdf|%1/x.pdf"_s, 1, {u"número 99"_s}, 0);
  row("no such selection", u"cartas|--carta|1|--seleccion|Nadie|--pdf|%1/x.pdf"_s, 1, {u"«Nadie»"_s}, 0);
  row("nobody with an address", u"cartas|--carta|3|--seleccion|Sin señas|--pdf|%1/x.pdf"_s, 1,
      {u"sin dirección"_s, u"No hay nadie"_s}, 0);
  row("a marker that is none", u"cartas|--carta|2|"_s + all + u"|--pdf|%1/x.pdf"_s, 1, {u"[Nombrre]"_s, u"--aceptar"_s},
      0);
  row("accepted", u"cartas|--carta|2|"_s + abroad + u"|--aceptar|--pdf|%1/x.pdf"_s, 0,
      {u"Se deja como está:"_s, u"14 cartas"_s}, 1);
  row("nowhere", u"cartas|--carta|1|"_s + abroad + u"|--pdf|/proc/x.pdf"_s, 1, {u"No se puede escribir"_s}, 0);
}

void tst_mailing_command::Ends() {
  QFETCH(QString, arguments);
  QFETCH(QStringList, said);
  const Ended ended = Run(arguments);
  QTEST(ended.code, "code");
  for (const QString& words : said) {
    QVERIFY2(ended.said.contains(words), qPrintable(ended.said));
  }
  QTEST(static_cast<int>(FilesIn(m_folder).size()), "files");
}

void tst_mailing_command::Printed() {
  const QString labels =
      u"etiquetas|--hoja|1|--seleccion|Colaboradores del extranjero|--desde-la-ultima|--recordar|--impresora|"_s;
  const support::PrintServer printers;
  for (const auto& [printer, said] : {std::pair(u"parada"_s, u"está parada"_s),
                                      {u"cerrada"_s, u"no admite trabajos"_s},
                                      {u"ninguna"_s, u"Hay: cerrada, oficina, parada"_s},
                                      {u"oficina|--bandeja|sotano"_s, u"Tiene: "_s}}) {
    const Ended ended = Run(labels + printer);
    QVERIFY2(ended.code == 1 && ended.said.contains(said), qPrintable(ended.said));
  }
  QCOMPARE(m_database.Query(u"SELECT NULTIMAETIQUETA FROM ETIQUETAS WHERE IDETIQUETA=1"), QStringList(u"0"_s));
  const Ended ended = Run(labels + u"oficina"_s);
  QVERIFY2(ended.code == 0 && ended.said.contains(u"trabajo 1"_s), qPrintable(ended.said));
  printers.Delivered(1);
  QCOMPARE(m_database.Query(u"SELECT NULTIMAETIQUETA FROM ETIQUETAS WHERE IDETIQUETA=1"), QStringList(u"14"_s));
}

/// Whenever a signal comes, a file is whole or not there, and nothing else is.
void tst_mailing_command::Signalled() {
  int broken = 0;
  for (const int least : {0, 1, 40}) {
    QProcess program;
    Start(program, u"cartas|--carta|3|--seleccion|Todas las personas|--pdf-por-persona|%1"_s);
    QVERIFY(program.waitForStarted());
    QVERIFY(QTest::qWaitFor([&] { return FilesIn(m_folder).size() >= least; }, 20'000));
    kill(static_cast<pid_t>(program.processId()), SIGTERM);
    QVERIFY(program.waitForFinished());
    const QString said = QString::fromUtf8(program.readAll());
    const QStringList files = FilesIn(m_folder);
    for (const QString& name : files) {
      QFile file(QDir(m_folder).filePath(name));
      QVERIFY2(name.endsWith(u".pdf"_s) && file.open(QFile::ReadOnly) && file.readAll().trimmed().endsWith("%%EOF"),
               qPrintable(name));
    }
    if (said.contains(u"Interrumpido"_s)) {
      ++broken;
      QCOMPARE(program.exitCode(), 1);
      QVERIFY2(said.contains(u"Interrumpido: %1 de "_s.arg(files.size())), qPrintable(said));
    }
    cleanup();
    init();
  }
  QVERIFY(broken > 0);
}

KEL_TEST(tst_mailing_command);
#include "tst_mailing_command.moc"
