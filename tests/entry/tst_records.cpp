#include "support/Expect.h"

#include <QFile>
#include <QMap>
#include <QMessageBox>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// The lines of one record of records.txt, by their first word.
using RecordLines = QMap<QString, QStringList>;

const QMap<QString, int> nodes{{u"frmPais"_s, node.Paises()},
                               {u"frmProvincia"_s, node.Provincias()},
                               {u"frmDiocesis"_s, node.Diocesis()},
                               {u"frmComunidadAutonoma"_s, node.ComunidadAutonoma()},
                               {u"frmDeduccionComunidad"_s, node.DeduccionesComunidad()},
                               {u"frmTipoDeduccion"_s, node.TipoDeduccion()},
                               {u"frmPresentador"_s, node.Presentadores()},
                               {u"frmEmisor"_s, node.Emisores()},
                               {u"frmCobrador"_s, node.Cobradores()},
                               {u"frmCabecera"_s, node.Cabeceras()}};

const QMap<QString, int> actions{
    {u"Agregar"_s, action.Agregar()}, {u"Nuevo"_s, action.Nuevo()}, {u"Modificar"_s, action.Modificar()}};

void Do(TestHost& host, const DialogUser& dialog, const QString& step) {
  static const QRegularExpression parts(u"^(\\w+)([=:>]?)(.*)$"_s);
  const QRegularExpressionMatch match = parts.match(step);
  const QByteArray control = match.captured(1).toUtf8();
  const QString kind = match.captured(2);
  if (kind == u"="_s) {
    dialog.Type(control, match.captured(3));
  } else if (kind == u":"_s) {
    dialog.Choose(control, match.captured(3));
  } else if (kind.isEmpty()) {
    dialog.Press(control);
  } else {
    host.driver.Answer(QMessageBox::Ok);
    dialog.Press(control);
    if (dialog.Focused() != match.captured(3)) {
      throw support::Failure("focus after a refusal:", dialog.Focused());
    }
  }
}

QString Shown(const DialogUser& dialog, const QString& controls) {
  QStringList texts{dialog.Text("")};
  for (const QString& control : controls.split(u' ', Qt::SkipEmptyParts)) {
    texts.append(dialog.Text(control.toUtf8()));
  }
  return texts.join(u'|');
}

// Locks are the host's own, and opening and closing are the dispatcher's.
QStringList Statements(QStringList log) {
  log.removeIf([](const QString& entry) {
    return entry == u"OPEN"_s || entry == u"CLOSE"_s || entry.contains(u"BloqueoRegistros"_s);
  });
  return log;
}

}  // namespace

/// Every dialog adds and modifies a record as tests/data/records.txt has it, from 77 in IDAux: an addition on behalf of
/// another dialog hands its key back; a lock is held while the dialog is open and not afterwards.
class tst_records : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Record_data();
  void Record();
};

void tst_records::Record_data() {
  QTest::addColumn<QStringList>("request");
  QTest::addColumn<RecordLines>("lines");
  QFile file(qEnvironmentVariable("KEL_DATOS") + u"/records.txt"_s);
  QVERIFY(file.open(QIODevice::ReadOnly));
  const QStringList blocks = QString::fromUtf8(file.readAll()).split(u"\n\n"_s, Qt::SkipEmptyParts);
  for (const QString& block : blocks) {
    QStringList lines = block.split(u'\n', Qt::SkipEmptyParts);
    lines.removeIf([](const QString& line) { return line.startsWith(u'#'); });
    if (lines.isEmpty()) {
      continue;
    }
    const QStringList head = lines.takeFirst().split(u": "_s);
    RecordLines record;
    for (const QString& line : lines) {
      const QString text = line.trimmed();
      record[text.section(u' ', 0, 0)].append(text.section(u' ', 1).replace(u'·', u' '));
    }
    QTest::newRow(qPrintable(head[0])) << head[1].split(u' ') << record;
  }
}

void tst_records::Record() {
  QFETCH(QStringList, request);
  QFETCH(RecordLines, lines);
  const QString name = request[0];
  const int key = request.value(2).toInt();
  TestHost host;
  for (const QString& statement : lines[u"before"_s]) {
    host.Connect()->Execute(statement);
  }
  // Intended: a collector is never locked.
  const QStringList lock = key != 0 && name != u"frmCobrador"_s ? QStringList(QString::number(key)) : QStringList();
  host.driver.On(qPrintable(name), [&](const DialogUser& dialog) {
    for (const QString& shown : lines[u"shows"_s]) {
      QCOMPARE(Shown(dialog, shown.section(u"= "_s, 0, 0)), shown.section(u"= "_s, 1));
    }
    QCOMPARE(host.Query(u"SELECT ValorID FROM BloqueoRegistros"), lock);
    for (const QString& step : lines[u"do"_s]) {
      Do(host, dialog, step);
    }
  });
  EXPECT_CLEAN(host, host.PasarDatos(nodes[name], actions[request[1]], key, 77));
  QStringList boxes = host.driver.TakeBoxes();
  QCOMPARE(boxes.replaceInStrings(u"Prueba|"_s, QString()), lines[u"box"_s]);
  QCOMPARE(Statements(host.Recording().Log()).join(u'\n'), lines[u"sql"_s].join(u'\n'));
  QCOMPARE(host.Query(u"SELECT ValorID FROM BloqueoRegistros"), QStringList());
  const QStringList keys = lines[u"sql"_s].filter(u"SELECT MAX"_s);
  const QString given = keys.isEmpty() ? u"77"_s : support::Rows(*host.Connect(), keys.last()).join(u'/');
  QCOMPARE(host.services().property("IDAux").toString(), given);
}

KEL_TEST(tst_records);
#include "tst_records.moc"
