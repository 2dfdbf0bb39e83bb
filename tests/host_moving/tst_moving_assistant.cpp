#include "host/moving/window/FilePage.h"
#include "host/moving/window/MovingAssistant.h"
#include "host/records/Session.h"
#include "platform/automation/Error.h"
#include "support/DesktopFile.h"
#include "support/Driver.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;
using support::DesktopFile;

namespace {

/// The assistant on a database of its own, used as a person does.
class Assistant {
 public:
  explicit Assistant(bool isAdministrator = true)
      : m_window({database.ConnectionString(), database.Path(u"copias"_s), 1, u"ana"_s, isAdministrator, false},
                 u"Kel"_s) {
    QCoreApplication::setOrganizationName(u"Kel"_s);
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, database.Path(u"."_s));
    m_window.show();
  }

  /// Writes a file and chooses it.
  void Open(const QString& name, const QByteArray& bytes) {
    QFile file(database.Path(name));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    m_window.Open(file.fileName());
    Wait();
  }
  template <typename Control = QWidget>
  Control& Find(const char* name) {
    auto* control = m_window.findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) {
      throw support::Failure("no control", QString::fromLatin1(name));
    }
    return *control;
  }
  void Press(const char* button) {
    if (!Find<QPushButton>(button).isEnabled()) {
      throw support::Failure("a button that is off", QString::fromLatin1(button));
    }
    Find<QPushButton>(button).click();
    Wait();
  }
  void Wait() {
    if (!QTest::qWaitFor([this] { return !m_window.IsBusy(); }, 30'000)) {
      qWarning("the assistant is still busy");
    }
  }
  /// The rows of a list, "cell|cell", without what has no text.
  QStringList Rows(const char* list) {
    const QAbstractItemModel& model = *Find<host::GridView>(list).model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column) {
        cells += model.index(row, column).data().toString();
      }
      rows += cells.join(u'|');
    }
    return rows;
  }
  /// Goes to a row of a list and chooses by the keyboard.
  void Choose(const char* list, int row, const QString& choice) {
    auto& view = Find<host::GridView>(list);
    view.setFocus();
    view.setCurrentIndex(view.model()->index(row, 0));
    QTest::keyClick(&view, Qt::Key_F2);
    const QList<QComboBox*> boxes = view.findChildren<QComboBox*>();
    // One that was closed may still be there.
    QComboBox* box = boxes.isEmpty() ? nullptr : boxes.constLast();
    if (box == nullptr || box->findText(choice) < 0) {
      throw support::Failure("no choice", choice);
    }
    box->setCurrentIndex(box->findText(choice));
    Q_EMIT box->activated(box->currentIndex());
    Wait();
  }
  void GoTo(const char* list, int row) {
    auto& view = Find<host::GridView>(list);
    view.setCurrentIndex(view.model()->index(row, 0));
  }
  QString Text(const char* label) { return Find<QLabel>(label).text(); }
  bool MayGoOn() { return Find<QPushButton>("cmdSiguiente").isEnabled(); }
  host::MovingAssistant& Window() { return m_window; }

  const support::TestDatabase database;
  support::Driver driver;

 private:
  host::MovingAssistant m_window;
};

const QList<DesktopFile::Column> bankColumns = {
    {u"IDBanco"_s, DesktopFile::Long}, {u"Numero"_s, DesktopFile::Text}, {u"Nombre"_s, DesktopFile::Text}};

QByteArray TwoBanks(const QString& table = u"BANCOS"_s) {
  DesktopFile file;
  file.AddTable(u"tblOtra"_s, {{u"Id"_s, DesktopFile::Long}});
  file.AddTable(table, bankColumns);
  file.AddRow({40, u"0777"_s, u"Banco del Olivar"_s});
  file.AddRow({41, u"777"_s, u"Caja de la Ribera"_s});
  return file.Bytes();
}

}  // namespace

/// The assistant that brings files in, window and all.
class tst_moving_assistant : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void FromTheFileToTheReport();
  void NamesByHand();
  void ListsAreReadAsTheyAreSaidToBe();
  void LossesWantConsent();
  void WhoMayNot_data();
  void WhoMayNot();
  void Interrupted();
  void ManyWarningsStayQuick();
};

void tst_moving_assistant::FromTheFileToTheReport() {
  Assistant assistant;
  QVERIFY(!assistant.MayGoOn());
  assistant.Open(u"a.mdb"_s, TwoBanks());
  QCOMPARE(assistant.Text("lblEstadoArchivo"), u"2 tablas, 2 registros."_s);
  assistant.Press("cmdSiguiente");
  QCOMPARE(assistant.Rows("grdTablas"), QStringList({u"tblOtra|0|— no entra —|"_s, u"BANCOS|2|Bancos|3 de 3"_s}));
  assistant.Press("cmdSiguiente");
  assistant.GoTo("grdEntra", 1);
  QCOMPARE(assistant.Rows("grdEntra").constLast(),
           u"BANCOS|Bancos|2|2|–|–|se conservan|1 pregunta · «Numero» se completa con ceros (1)"_s);
  QCOMPARE(assistant.Rows("grdAvisos"),
           QStringList(u"IDBanco 41 · 0777 · Caja de la Ribera|su número es también el de IDBanco 40||entra como "
                       "eliminado"_s));
  assistant.Choose("grdAvisos", 0, u"se une a él"_s);
  QCOMPARE(assistant.Rows("grdAvisos").constFirst().section(u'|', -1), u"se une a él"_s);
  QVERIFY(assistant.Text("lblResumen").startsWith(u"Todavía no se ha escrito nada. Registros nuevos: 1;"_s));
  QCOMPARE(assistant.database.Query(u"SELECT * FROM Bancos"), QStringList());
  assistant.Press("cmdSiguiente");
  QVERIFY(assistant.Window().HasBrought());
  QCOMPARE(assistant.database.Query(u"SELECT Numero, Nombre FROM Bancos"), QStringList(u"0777|Banco del Olivar"_s));
  const QString report = assistant.Find<QPlainTextEdit>("txtInforme").toPlainText();
  QVERIFY2(report.contains(u"Se han traído."_s) && report.contains(u"[Bancos 41 numero=unir]"_s), qPrintable(report));
  // The copy can be looked at, and the report lies beside it.
  const QStringList kept = QDir(assistant.database.Path(u"copias"_s)).entryList(QDir::Files);
  QCOMPARE(kept.size(), 2);
  QVERIFY(kept.constFirst().endsWith(u".db"_s) && kept.constLast().endsWith(u".txt"_s));
  // Once more there is nothing to bring.
  Assistant again;
  again.Open(u"a.mdb"_s, TwoBanks(u"Nada"_s));
  again.Press("cmdSiguiente");
  QVERIFY(!again.MayGoOn());
}

void tst_moving_assistant::NamesByHand() {
  Assistant assistant;
  DesktopFile file;
  file.AddTable(u"Entidades"_s, {{u"Clave"_s, DesktopFile::Text}, {u"Razón"_s, DesktopFile::Text}});
  file.AddRow({u"49"_s, u"Banco Puente"_s});
  const QList<DesktopFile::Column> dioceses = {{u"IDDiocesis"_s, DesktopFile::Long}, {u"Nombre"_s, DesktopFile::Text}};
  file.AddTable(u"Diocesis"_s, dioceses);
  file.AddRow({1, u"Otra"_s});
  assistant.Open(u"a.mdb"_s, file.Bytes());
  assistant.Press("cmdSiguiente");
  assistant.Choose("grdTablas", 1, u"— no entra —"_s);
  QVERIFY(!assistant.MayGoOn());
  assistant.Choose("grdTablas", 0, u"Bancos"_s);
  QVERIFY(!assistant.MayGoOn());
  assistant.Choose("grdColumnas", 0, u"Numero"_s);
  assistant.Choose("grdColumnas", 1, u"Nombre"_s);
  QCOMPARE(assistant.Rows("grdColumnas"), QStringList({u"Clave|49|Numero"_s, u"Razón|Banco Puente|Nombre"_s}));
  QCOMPARE(assistant.Rows("grdTablas"), QStringList({u"Entidades|1|Bancos|2 de 2"_s, u"Diocesis|1|— no entra —|"_s}));
  assistant.Press("cmdSiguiente");
  // Back and forth nothing is forgotten.
  assistant.Press("cmdAtras");
  assistant.Press("cmdAtras");
  assistant.Press("cmdSiguiente");
  assistant.Press("cmdSiguiente");
  assistant.Press("cmdSiguiente");
  QCOMPARE(assistant.database.Query(u"SELECT Numero, Nombre FROM Bancos"), QStringList(u"0049|Banco Puente"_s));
  // The next file with these headings needs no word; another one does.
  Assistant again;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, assistant.database.Path(u"."_s));
  DesktopFile next;
  next.AddTable(u"Otras"_s, {{u"CLAVE"_s, DesktopFile::Text}, {u"razon"_s, DesktopFile::Text}});
  next.AddRow({u"50"_s, u"Caja Nueva"_s});
  next.AddTable(u"Más"_s, {{u"CLAVE"_s, DesktopFile::Text}, {u"razones"_s, DesktopFile::Text}});
  next.AddTable(u"Diocesis"_s, dioceses);
  again.Open(u"b.mdb"_s, next.Bytes());
  again.Press("cmdSiguiente");
  QCOMPARE(again.Rows("grdTablas"), QStringList({u"Otras|1|Bancos|2 de 2, como la última vez"_s,
                                                 u"Más|0|— no entra —|"_s, u"Diocesis|0|— no entra —|"_s}));
  QCOMPARE(again.Rows("grdColumnas"), QStringList({u"CLAVE|50|Numero"_s, u"razon|Caja Nueva|Nombre"_s}));
  again.Choose("grdColumnas", 1, u"— no entra —"_s);
  QCOMPARE(again.Rows("grdTablas").constFirst(), u"Otras|1|Bancos|1 de 2"_s);
  again.Press("cmdSiguiente");
  QVERIFY(again.Text("lblResumen").startsWith(u"Todavía"_s));
}

void tst_moving_assistant::ListsAreReadAsTheyAreSaidToBe() {
  Assistant assistant;
  assistant.Open(u"Bancos.csv"_s,
                 "Numero,Nombre\n1,Pe\xF1"
                 "a\n");
  QCOMPARE(assistant.Rows("grdMuestra"), QStringList(u"1|Peña"_s));
  auto& separator = assistant.Find<QComboBox>("cboSeparador");
  separator.setCurrentIndex(separator.findText(u"Punto y coma"_s));
  Q_EMIT separator.activated(separator.currentIndex());
  assistant.Wait();
  QCOMPARE(assistant.Rows("grdMuestra"), QStringList(u"1,Peña"_s));
  // A person knows better where the headings are.
  assistant.Open(u"Lista.csv"_s, "Listado;2026\n;\nClave;Razón\n49;Puente\n");
  auto& headings = assistant.Find<QComboBox>("cboTitulos");
  QCOMPARE(headings.itemText(2), u"2.ª fila: Clave · Razón"_s);
  headings.setCurrentIndex(2);
  Q_EMIT headings.activated(2);
  assistant.Wait();
  QCOMPARE(assistant.Rows("grdMuestra"), QStringList(u"49|Puente"_s));
  QCOMPARE(headings.currentData().toInt(), 2);
  QCOMPARE(headings.itemText(1), u"1.ª fila: Listado · 2026"_s);
  // A file that is none says what it is, and another one begins anew.
  assistant.Open(u"b.mdb"_s, "%PDF-1.4 ");
  QVERIFY(!assistant.Text("lblEstadoArchivo").isEmpty() && !assistant.MayGoOn());
  assistant.Open(u"c.mdb"_s, TwoBanks());
  QVERIFY(assistant.MayGoOn() && !separator.isEnabled() && !headings.isEnabled());
}

void tst_moving_assistant::LossesWantConsent() {
  Assistant assistant;
  assistant.Open(u"Bancos.csv"_s, "Numero;Nombre;Eliminado\n1;Uno;no\n2;Dos;quizá\n");
  assistant.Press("cmdSiguiente");
  assistant.Press("cmdSiguiente");
  QVERIFY(!assistant.MayGoOn());
  QVERIFY(assistant.Text("lblResumen").contains(u"no entran: 1."_s));
  auto& search = assistant.Find<QLineEdit>("txtBuscarAvisos");
  search.setText(u"QUIZA"_s);
  QCOMPARE(assistant.Rows("grdAvisos").size(), 1);
  search.setText(u"nada de eso"_s);
  QCOMPARE(assistant.Rows("grdAvisos").size(), 0);
  assistant.Find<QCheckBox>("chkAunqueFalten").setChecked(true);
  assistant.Press("cmdSiguiente");
  QCOMPARE(assistant.database.Query(u"SELECT Nombre FROM Bancos"), QStringList(u"Uno"_s));
}

void tst_moving_assistant::WhoMayNot_data() {
  QTest::addColumn<bool>("isAdministrator");
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("said");
  QTest::newRow("nobody but an administrator") << false << QString() << u"Sólo un administrador"_s;
  QTest::newRow("a record is open")
      << true
      << u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario) VALUES (1, 'IDPais', 1, 'eva')"_s
      << u"Hay registros abiertos"_s;
  QTest::newRow("the database changed since the preview")
      << true << u"INSERT INTO Bancos (Numero, Nombre) VALUES ('0777', 'Banco del Olivar')"_s << u"han cambiado"_s;
}

void tst_moving_assistant::WhoMayNot() {
  QFETCH(bool, isAdministrator);
  QFETCH(QString, statement);
  QFETCH(QString, said);
  Assistant assistant(isAdministrator);
  assistant.Open(u"a.mdb"_s, TwoBanks());
  assistant.Press("cmdSiguiente");
  assistant.Press("cmdSiguiente");
  if (!statement.isEmpty()) {
    assistant.database.Execute(u"{}", adodb::Verbatim{statement});
  }
  const QStringList before = assistant.database.Query(u"SELECT * FROM Bancos");
  assistant.driver.Answer(QMessageBox::Ok);
  assistant.Press("cmdSiguiente");
  assistant.Wait();
  const QStringList boxes = assistant.driver.TakeBoxes();
  QVERIFY2(boxes.size() == 1 && boxes.constFirst().contains(said), qPrintable(boxes.join(u'\n')));
  QCOMPARE(assistant.database.Query(u"SELECT * FROM Bancos"), before);
  QVERIFY(QDir(assistant.database.Path(u"copias"_s)).isEmpty(QDir::Files));
  // The preview is made anew.
  QVERIFY(assistant.Text("lblResumen").startsWith(u"Todavía"_s));
}

void tst_moving_assistant::Interrupted() {
  Assistant assistant;
  // So many that their writing is seen on a quick machine, too.
  QByteArray list = "Nombre;Descripcion\n";
  for (int i = 0; i < 100'000; ++i) {
    list += "Nombre " + QByteArray::number(i) + ";Encabezado " + QByteArray::number(i) + '\n';
  }
  const QStringList before = assistant.database.Query(u"SELECT COUNT(*) FROM Encabezados");
  assistant.Open(u"Encabezados.csv"_s, list);
  assistant.Press("cmdSiguiente");
  assistant.Press("cmdSiguiente");
  assistant.Find<QPushButton>("cmdSiguiente").click();
  QVERIFY(assistant.Window().IsBusy());
  QVERIFY(QTest::qWaitFor([&] { return assistant.Text("lblProgreso").startsWith(u"Escribiendo"_s); }, 30'000));
  QElapsedTimer time;
  time.start();
  assistant.Find<QPushButton>("cmdCancelar").click();
  QVERIFY(QTest::qWaitFor([&] { return !assistant.Text("lblResumen").startsWith(u"Todavía"_s); }, 30'000));
  assistant.Wait();
  QVERIFY(!assistant.Window().HasBrought());
  QCOMPARE(assistant.database.Query(u"SELECT COUNT(*) FROM Encabezados"), before);
  QVERIFY(QDir(assistant.database.Path(u"copias"_s)).isEmpty(QDir::Files));
}

void tst_moving_assistant::ManyWarningsStayQuick() {
  // Milliseconds for forty pages of that many warnings.
  const auto leaf = [](int warnings) {
    Assistant assistant;
    QByteArray list = "Numero;Nombre;Eliminado\n";
    for (int i = 0; i < warnings; ++i) {
      list += "1;Banco " + QByteArray::number(i) + ";quiz\xC3\xA1\n";
    }
    assistant.Open(u"Bancos.csv"_s, list);
    assistant.Press("cmdSiguiente");
    assistant.Press("cmdSiguiente");
    auto& view = assistant.Find<host::GridView>("grdAvisos");
    if (view.model()->rowCount() != warnings) {
      throw support::Failure("not all warnings", QString::number(view.model()->rowCount()));
    }
    QElapsedTimer time;
    time.start();
    constexpr int pages = 40;
    for (int page = 0; page < pages; ++page) {
      assistant.GoTo("grdAvisos", page * warnings / pages);
      view.grab();
    }
    return time.elapsed();
  };
  const qint64 few = leaf(40);
  const qint64 many = leaf(20'000);
  constexpr qint64 moment = 500;
  QVERIFY2(many < 10 * few + moment, qPrintable(u"%1 ms, few %2 ms"_s.arg(many).arg(few)));
}

KEL_TEST(tst_moving_assistant);

#include "tst_moving_assistant.moc"
