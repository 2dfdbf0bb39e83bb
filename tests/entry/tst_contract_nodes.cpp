#include "entry/Deletion.h"
#include "entry/Dispatch.h"
#include "support/Expect.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QMap>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// What IDAux holds before each request: a record that is there in every table that it may mean.
constexpr int given = 2;
constexpr int gone = 987654;

using Row = QMap<QString, QString>;

// The rows of the page's table whose first column has that title; code marks are left out.
QList<Row> Table(const QString& firstColumn) {
  QFile file(qEnvironmentVariable("KEL_DATOS") + u"/../../docs/contract-nodes.md"_s);
  if (!file.open(QIODevice::ReadOnly)) {
    throw support::Failure("no page", file.fileName());
  }
  QList<Row> rows;
  QStringList columns;
  for (const QString& line : QString::fromUtf8(file.readAll()).remove(u'`').split(u'\n')) {
    QStringList cells;
    for (const QString& cell : line.split(u'|').mid(1)) {
      cells.append(cell.trimmed());
    }
    if (cells.value(0) == firstColumn) {
      columns = cells;
    } else if (cells.isEmpty()) {
      columns.clear();
    } else if (!columns.isEmpty() && !cells[0].startsWith(u"---"_s)) {
      Row row;
      for (qsizetype i = 0; i + 1 < columns.size(); ++i) {
        row[columns[i]] = cells.value(i);
      }
      rows.append(row);
    }
  }
  return rows;
}

QMap<QString, Row> Controls() {
  QMap<QString, Row> dialogs;
  for (const Row& row : Table(u"dialog"_s)) {
    dialogs[row[u"dialog"_s]] = row;
  }
  return dialogs;
}

// What is typed into the boxes of a new record; %1 is another number each time.
const QMap<int, QString> typed{
    {19, u"txtBanco_0=9%1 txtBanco_1=Banco"_s},
    {0, u"txtSucursales_0=7%1 txtSucursales_1=Sucursal"_s},
    {15, u"txtNombre=Cabecera"_s},
    {16, u"txtDiocesis=Nueva"_s},
    {18, u"txtNombre=Emisor txtNIF=A11111119 txtSufijo=%1"_s},
    {20, u"txtPais=Atlántida"_s},
    {21, u"txtNombre=Presentador txtNIF=A11111119 txtSufijo=%1"_s},
    {32, u"txtCobrador_0=Cobrador"_s},
    {22, u"txtProvincia=Nueva"_s},
    {25, u"txtPublicacion=Hoja txtPrecioNac=1 txtPrecioExt=2"_s},
    {17, u"txtTipoDonativo_0=Obras"_s},
    {27, u"txtDeduccion=%1"_s},
    {30,
     u"txtReferencia=Hoja txtEtiquetasTotales=24 txtEtiquetasFila=3 txtMedidas_0=6 txtMedidas_1=3 txtMedidas_2=0 "
     "txtMedidas_3=0 txtMedidas_4=1 txtMedidas_5=1 optDisco"_s},
    {35, u"txtComunidad=Nueva txtCodigo=%1"_s},
    {36, u"txtEncabezado=Estimado"_s},
};

// Boxes as above, and the first item of each list without a choice.
void Fill(const DialogUser& dialog, int number) {
  static int another = 0;
  for (const QString& step :
       QString(typed[number]).replace(u"%1"_s, QString::number(82 + ++another % 17)).split(u' ', Qt::SkipEmptyParts)) {
    const QByteArray control = step.section(u'=', 0, 0).toUtf8();
    step.contains(u'=') ? dialog.Type(control, step.section(u'=', 1)) : dialog.Press(control);
  }
  for (const QComboBox* list : dialog.Dialog()->findChildren<QComboBox*>()) {
    if (list->isVisible() && list->currentIndex() < 0 && list->count() > 0) {
      dialog.Choose(list->objectName().toUtf8(), list->itemText(0));
    }
  }
}

void Use(const DialogUser& dialog, const QString& control) {
  if (auto* item = dialog.Dialog()->findChild<QAction*>(control)) {
    item->trigger();
  } else {
    dialog.Press(control.toUtf8());
  }
}

// The names of a cell that the dialog lacks; "cmdBanco_0…4" are those of an array.
QStringList Missing(const QString& names, const QDialog& dialog) {
  QStringList missing;
  for (const QString& name : names.split(u' ', Qt::SkipEmptyParts)) {
    const QString array = name.section(u'_', 0, -2) + u'_';
    const QStringList ends = name.section(u'_', -1).split(u'…');
    for (int i = ends[0].toInt(); ends.size() == 2 && i <= ends[1].toInt(); ++i) {
      if (dialog.findChild<QWidget*>(array + QString::number(i)) == nullptr) {
        missing.append(array + QString::number(i));
      }
    }
    if (ends.size() == 1 && dialog.findChild<QObject*>(name) == nullptr) {
      missing.append(name);
    }
  }
  return missing;
}

// How a request ends.
enum End { Accepted, Cancelled, Closed };

QString NewestKey(const Row& row, TestHost& host) {
  const QString record = row[u"record"_s];
  return host.Query(u"SELECT MAX({}) FROM {}", adodb::Verbatim{record.section(u'.', 1)},
                    adodb::Verbatim{record.section(u'.', 0, 0)})[0];
}

bool IsModify(int requested) {
  return requested == action.Modificar();
}

// The cell of an action.
QString CellOf(const Row& row, int requested) {
  const QMap<int, QString> columns{
      {action.Agregar(), u"Agregar"_s}, {action.Nuevo(), u"Nuevo"_s}, {action.Modificar(), u"Modificar"_s}};
  return row[columns.value(requested, u"any other"_s)];
}

QString Line(int requested, End end, const QString& locked, const QString& written, const QString& aux) {
  return u"action %1, end %2: locks %3, writes %4, IDAux %5"_s.arg(requested).arg(int(end)).arg(locked, written, aux);
}

// What the page says of a request; "key" stands for the newest record's.
QString Said(const Row& row, int requested, End end) {
  const QString cell = CellOf(row, requested);
  QString written = end == Accepted ? cell.section(u", "_s, 0, 0) : u"nothing"_s;
  QString aux = end == Accepted ? cell.section(u", "_s, 1) : row[end == Closed ? u"closed"_s : u"Cancel"_s];
  if (aux == u"0 under Nuevo") {
    aux = requested == action.Nuevo() ? u"0"_s : u"kept"_s;
  }
  return Line(requested, end, IsModify(requested) ? row[u"Modificar locks"_s] : u"nothing"_s, written,
              aux == u"kept" ? QString::number(given) : aux);
}

// A person ends the dialog.
void Finish(const DialogUser& dialog, const Row& row, int requested, End end, TestHost& host) {
  const Row controls = Controls()[row[u"dialog"_s]];
  const int number = row[u"node"_s].toInt();
  const bool isLetter = number == node.CartasModelo();
  const QString cell = CellOf(row, requested);
  if (end == Accepted && !cell.startsWith(u"UPDATE"_s)) {
    Fill(dialog, number);
    if (isLetter) {
      host.driver.AnswerInput(u"Carta"_s);
    }
  }
  if (end == Accepted) {
    const bool isRefused = cell.startsWith(u"refused"_s);
    if (isRefused) {
      host.driver.Answer(QMessageBox::Ok);
    }
    Use(dialog, controls[u"Accept"_s]);
    if (!isRefused) {
      return;
    }
  } else if (isLetter) {
    host.driver.Answer(QMessageBox::No);
  }
  end == Closed ? dialog.Close() : Use(dialog, controls[u"Cancel"_s]);
}

// The same of a request that is made.
QString Done(const Row& row, int requested, End end, TestHost& host) {
  const int number = row[u"node"_s].toInt();
  const int record = NewestKey(row, host).toInt();
  QStringList locked;
  host.driver.On(qPrintable(row[u"dialog"_s]), [&](const DialogUser& dialog) {
    locked = host.Query(u"SELECT campoID FROM BloqueoRegistros");
    Finish(dialog, row, requested, end, host);
  });
  // A collector is added or modified, and anything else is told.
  if (number == node.Cobradores() && requested != action.Agregar() && !IsModify(requested)) {
    host.driver.Answer(QMessageBox::Ok);
  }
  const auto error = host.PasarDatos(number, requested, record, given);
  QStringList surprises = host.driver.TakeProblems();
  const QObject& services = host.services();
  if (error || host.Recording().State() != adodb::StateClosed || services.property("IDNodo") != number ||
      services.property("Accion") != requested || services.property("IDSeleccionado") != record) {
    surprises.append(error ? error->Description() : u"the request is not as it was"_s);
  }
  QStringList written;
  for (const QString& statement : host.Recording().Writes()) {
    if (!statement.contains(u"BloqueoRegistros") && !statement.contains(u"EtiquetasCampos")) {
      written.append(statement.section(u' ', 0, 0));
    }
  }
  const auto orNothing = [](const QStringList& list) { return list.isEmpty() ? u"nothing"_s : list.join(u'+'); };
  return (QStringList(
              Line(requested, end, orNothing(locked), orNothing(written), services.property("IDAux").toString())) +
          surprises)
      .join(u", "_s);
}

}  // namespace

/// The table of docs/contract-nodes.md, driven: every node under every action, ended in every way.
class tst_contract_nodes : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void RowsAreTheComponentsOwn();
  void Node_data();
  void Node();
  void Refusals();
  void ControlsAreNamed();

 private:
  static void RecordIsGone(const Row& row, TestHost& host);
};

// Number, dialog, key and opening of a node as the dispatcher has them, the deletion as its rule says.
void tst_contract_nodes::RowsAreTheComponentsOwn() {
  const QStringList openings{u"at once"_s, u"loaded first"_s, u"with a printer"_s, u"with a record"_s};
  QStringList own;
  for (const entry::dispatch::Entry& entry : entry::dispatch::Table()) {
    const int number = entry.node.toInt();
    const QString row = u"%1 %2 %3"_s.arg(number).arg(entry.dialog);
    const auto known = [&](const QString& text) { return text.startsWith(u"%1 "_s.arg(number)); };
    // The second row of a node is never reached.
    if (std::ranges::none_of(own, known)) {
      own.append(row.arg(openings[int(entry.opening)]));
    }
  }
  QStringList said;
  for (const Row& row : Table(u"node"_s)) {
    said.append(u"%1 %2 %3"_s.arg(row[u"node"_s], row[u"dialog"_s], row[u"opens"_s]));
    const auto rule = std::ranges::find(entry::deletion::Rules(), row[u"node"_s].toInt(), &entry::deletion::Rule::node);
    QString deletion = u"nothing"_s;
    if (rule != entry::deletion::Rules().end()) {
      QCOMPARE(row[u"record"_s].toUpper(),
               (QString::fromUtf16(rule->table) + u'.' + QString::fromUtf16(rule->key)).toUpper());
      const QString dependent = rule->cascade ? u" with "_s + rule->cascade->Text(0).section(u' ', 1, 1) : QString();
      deletion = u"marked"_s + dependent + (rule->references ? u" unless used"_s : QString());
    }
    QCOMPARE(row[u"node"_s] + u' ' + row[u"deletion"_s], row[u"node"_s] + u' ' + deletion);
  }
  QCOMPARE(said, own);
}

void tst_contract_nodes::Node_data() {
  QTest::addColumn<Row>("row");
  for (const Row& row : Table(u"node"_s)) {
    QTest::newRow(qPrintable(row[u"node"_s] + u' ' + row[u"dialog"_s])) << row;
  }
}

void tst_contract_nodes::Node() {
  QFETCH(Row, row);
  TestHost host(database::Content::Demonstration);
  host.desktop.printers = 1;
  QStringList done;
  QStringList said;
  for (const int requested :
       {action.Agregar(), action.Nuevo(), action.Modificar(), action.Eliminar(), action.Cargar(), action.Error()}) {
    for (const End end : {Cancelled, Closed, Accepted}) {
      done.append(Done(row, requested, end, host));
      said.append(
          Said(row, requested, end).replace(u"key"_s, NewestKey(row, host)).replace(u"refused"_s, u"nothing"_s));
    }
  }
  for (qsizetype i = 0; i < done.size(); ++i) {
    QCOMPARE(done[i], said[i]);
  }
  RecordIsGone(row, host);
}

// Modified, then deleted, although nobody has it any more.
void tst_contract_nodes::RecordIsGone(const Row& row, TestHost& host) {
  const int number = row[u"node"_s].toInt();
  const QString said = row[u"key is gone"_s];
  const bool shown = said.endsWith(u"shown"_s) || said == u"as ever";
  if (shown) {
    host.driver.On(qPrintable(row[u"dialog"_s]), [](const DialogUser& dialog) { dialog.Close(); });
  }
  if (said == u"box" || said.startsWith(u"VerError")) {
    host.driver.Answer(QMessageBox::Ok);
  }
  const auto error = host.PasarDatos(number, action.Modificar(), gone, given);
  QCOMPARE(host.driver.TakeProblems(), QStringList());
  QCOMPARE(error ? u"error %1"_s.arg(error->Number()) : u"no error"_s,
           said.startsWith(u"error") ? said : u"no error"_s);
  const QString boxes = host.driver.TakeBoxes().join(u' ');
  QCOMPARE(boxes.contains(u"Origen: KelConfiguracion"_s), said.startsWith(u"VerError"));
  QCOMPARE(host.services().property("IDAux").toInt(), given);
  QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
  EXPECT_CLEAN(host, host.EliminarRegistro(number, gone));
  QCOMPARE(host.driver.Boxes(), QStringList());
}

// What leaves IDAux as it was although nothing is shown.
void tst_contract_nodes::Refusals() {
  TestHost host;
  const auto aux = [&] { return host.services().property("IDAux").toInt(); };
  host.driver.Answer(QMessageBox::Ok);
  EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Nuevo(), 0, given));
  QCOMPARE(aux(), given);
  host.driver.Answer(QMessageBox::Ok);
  EXPECT_CLEAN(host, host.PasarDatos(node.Provincias(), action.Nuevo(), 0, gone));
  QCOMPARE(aux(), gone);
  host.driver.Answer(QMessageBox::Ok);
  EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Nuevo(), 0, 0));
  QCOMPARE(host.driver.TakeBoxes().size(), 3);
  EXPECT_CLEAN(host, host.PasarDatos(node.Encabezados().toInt(), action.Nuevo(), 0, given));
  QCOMPARE(aux(), given);
}

// Every name of the page is there, where the page says.
void tst_contract_nodes::ControlsAreNamed() {
  TestHost host(database::Content::Demonstration);
  host.desktop.printers = 1;
  QMap<QString, Row> said = Controls();
  QStringList missing;
  const auto look = [&](const DialogUser& dialog) {
    const Row row = said.take(dialog.Dialog()->objectName());
    missing += Missing(row[u"controls"_s] + u' ' + row[u"Accept"_s] + u' ' + row[u"Cancel"_s], *dialog.Dialog());
  };
  for (const Row& row : Table(u"node"_s)) {
    const QString name = row[u"dialog"_s];
    host.driver.On(qPrintable(name), [&](const DialogUser& dialog) {
      look(dialog);
      if (name == u"frmCartaModelo") {
        host.driver.Answer(QMessageBox::No);
      } else if (name == u"frmEtiquetas1") {
        host.driver.On("frmEtiquetas2", [&](const DialogUser& fields) {
          look(fields);
          fields.Close();
        });
        dialog.Press("cmdSeleccionar_1");
      }
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(row[u"node"_s].toInt(), action.Modificar(), 1, given));
  }
  QCOMPARE(missing, QStringList());
  QCOMPARE(said.keys(), QStringList());
}

KEL_TEST(tst_contract_nodes);
#include "tst_contract_nodes.moc"
