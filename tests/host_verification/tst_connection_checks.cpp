#include "host/verification/ConnectionChecks.h"
#include "platform/automation/Error.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

/// The component's statements on a connection: all of them, and what `kel-host verificar-conexion` says of connections.
class tst_connection_checks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void OwnConnectionHasNoFault();
  void EveryStatementIsThere();
  void OtherConnections_data();
  void OtherConnections();
  void TablesMustBeEmpty();
};

void tst_connection_checks::OwnConnectionHasNoFault() {
  const support::TestDatabase database(database::Content::Reference);
  for (const QString& table :
       {u"Paises"_s, u"Provincias"_s, u"Diocesis"_s, u"ComunidadAutonoma"_s, u"TipoDeducciones"_s, u"configuracion"_s,
        u"Usuarios"_s, u"Encabezados"_s, u"TipoCamposEtiquetas"_s, u"TipoSuscripciones"_s, u"TipoDonativos"_s}) {
    database.Connection().Execute(u"DELETE FROM "_s + table);
  }
  for (const host::MemberCheck& check : host::ConnectionChecks(database.Connection())) {
    const QString fault = host::FaultOf(check);
    QVERIFY2(fault.isEmpty(), qPrintable(check.member + u": "_s + fault));
  }
}

// Each literal of the component that is a statement has a line that fills its places.
void tst_connection_checks::EveryStatementIsThere() {
  const QString sourceFolder = qEnvironmentVariable("KEL_DATOS") + u"/../../src"_s;
  QFile file(sourceFolder + u"/host/verification/statements.txt"_s);
  QVERIFY(file.open(QIODevice::ReadOnly));
  const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
  const QRegularExpression literal(u"(?:u?\"(?:[^\"\\\\\\n]|\\\\.)*\"(?:_s)?\\s*)+"_s);
  const QRegularExpression part(u"\"((?:[^\"\\\\]|\\\\.)*)\""_s);
  const QRegularExpression verb(u"^(SELECT|INSERT|UPDATE|DELETE) "_s);
  int found = 0;
  for (const QString& folder : {u"banking"_s, u"entry"_s, u"labels"_s, u"letters"_s, u"publications"_s, u"reference"_s,
                                u"remittances"_s, u"taxes"_s}) {
    QDirIterator sources(sourceFolder + u'/' + folder, {u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (sources.hasNext()) {
      QFile source(sources.next());
      QVERIFY(source.open(QIODevice::ReadOnly));
      const QString text = QString::fromUtf8(source.readAll());
      for (auto texts = literal.globalMatch(text); texts.hasNext();) {
        const QString whole = texts.next().captured();
        QString statement;
        for (auto parts = part.globalMatch(whole); parts.hasNext();) {
          statement += parts.next().captured(1).replace(u"\\\""_s, u"\""_s);
        }
        if (!verb.match(statement).hasMatch()) {
          continue;
        }
        ++found;
        QString pattern = QRegularExpression::escape(statement);
        pattern.replace(QRegularExpression(u"\\\\\\{\\d?\\\\\\}"_s), u".*"_s);
        const QRegularExpression filled(QRegularExpression::anchoredPattern(pattern));
        QVERIFY2(lines.indexOf(filled) >= 0, qPrintable(source.fileName() + u": "_s + statement));
      }
    }
  }
  QVERIFY2(found > 100, qPrintable(QString::number(found)));
}

void tst_connection_checks::OtherConnections_data() {
  QTest::addColumn<QString>("without");
  QTest::addColumn<QString>("said");
  QTest::newRow("right") << QString() << u", 0 con faltas"_s;
  QTest::newRow("texts in capitals") << u"ucase"_s << u"falla con el error"_s;
  QTest::newRow("decimals as texts") << u"decimals"_s << u"en ImporteNacional da 1.234,00 (QString) y no 1234"_s;
  QTest::newRow("Nulls") << u"nulls"_s << u"y no Null"_s;
  QTest::newRow("errors of transactions") << u"transactions"_s << u"falla con el error"_s;
  QTest::newRow("long texts") << u"long"_s << u"en Contenido da"_s;
  QTest::newRow("line breaks") << u"breaks"_s << u"en Contenido da"_s;
  QTest::newRow("blanks at the ends") << u"blanks"_s << u"en NombreCampo da Sr. (QString) y no ' Sr. '"_s;
  QTest::newRow("the stored string") << u"stored"_s << u"falta la cadena"_s;
  QTest::newRow("transactions undone at the end") << u"undoing"_s << u"en Nombre da Iberia (QString) y no 'España'"_s;
  QTest::newRow("closed recordsets") << u"closed"_s << u"no devuelve un Recordset"_s;
  QTest::newRow("keys never given twice") << u"new keys"_s << u"y no {>campo}"_s;
}

void tst_connection_checks::OtherConnections() {
  QFETCH(QString, without);
  QFETCH(QString, said);
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"KEL_SIN"_s, without);
  program.setProcessEnvironment(environment);
  program.setProcessChannelMode(QProcess::MergedChannels);
  program.start(QStringLiteral(KEL_HOST), {u"verificar-conexion"_s, QStringLiteral(SQL_SERVICES)});
  QVERIFY(program.waitForFinished(60000));
  const QString output = QString::fromUtf8(program.readAll());
  QVERIFY2(output.contains(said), qPrintable(output));
  QCOMPARE(program.exitCode(), without.isEmpty() ? 0 : 1);
}

// Somebody's own database is not written to.
void tst_connection_checks::TablesMustBeEmpty() {
  const support::TestDatabase database(database::Content::Reference);
  QVERIFY_THROWS_EXCEPTION(automation::Error, host::ConnectionChecks(database.Connection()));
}

KEL_TEST(tst_connection_checks);
#include "tst_connection_checks.moc"
