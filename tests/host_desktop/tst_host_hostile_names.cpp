#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"
#include "support/TrapFile.h"

#include "host/desktop/LocksDialog.h"
#include "host/desktop/Strips.h"
#include "host/records/NodeCatalog.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstNodo.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMessageBox>
#include <QStatusBar>
#include <QtTest>

using namespace Qt::StringLiterals;

/// What users and databases wrote is shown as it stands everywhere in the program, and nothing that it names is opened.
class tst_host_hostile_names : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_desktop = std::make_unique<TestDesktop>(); }
  void cleanup() { m_desktop.reset(); }

  void InTheWindow_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("markup") << m_trap.Name();
    QTest::newRow("places of arguments") << u"%1 %2 %n %L1"_s;
    QTest::newRow("marks of menus") << u"&Uno && dos~ _tres"_s;
    QTest::newRow("lines") << u"uno\ndos\r\ntres\tcuatro"_s;
    QTest::newRow("right to left") << u"\u202E\u05D0\u05D1\u05D2 abc"_s;
    QTest::newRow("one long word") << u"W"_s.repeated(10'000);
    QTest::newRow("many words") << u"largo "_s.repeated(2'000);
  }

  void InTheWindow() {
    QFETCH(QString, name);
    m_desktop->Session().title = name;
    m_desktop->Session().userName = name;
    AddBanks(name);
    // The log, as somebody may have edited it.
    for (const char* columns : {"", "[[\"a", "[[1],{},[\"Nombre\",7]]", "[[\"%1\",\"%1\",\"%1\"]]"}) {
      m_desktop->database.Execute(
          u"INSERT INTO Cambios(Fecha,Usuario,Equipo,Clase,Tabla,ValorID,Nombre,Columnas) VALUES('ayer','{0}','{0}',77,"
          u"'Bancos',1,'{0}','{1}')",
          name, QString::fromUtf8(columns).replace(u"%1"_s, name.left(200)));
    }
    host::MainWindow& window = m_desktop->Restart();
    m_desktop->ChooseNode(host::homeNode);
    m_desktop->ChooseNode(cConstNodo().Bancos());
    m_desktop->List().SelectRecord(1);
    window.statusBar()->showMessage(name);
    window.findChild<host::Strips*>()->Tell({.subject = u"x"_s, .text = name, .ways = {{name.left(50), [] {}}}});
    m_desktop->SearchBox().setText(name);
    m_desktop->driver.On("historyDialog", [](const support::DialogUser& dialog) {
      dialog.Dialog()->grab();
      dialog.Close();
    });
    m_desktop->Action("actHistory").trigger();
    window.grab();
    for (QWidget* part : window.findChildren<QWidget*>()) {
      QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), part->mapToGlobal(QPoint(2, 2)));
      QApplication::sendEvent(part, &help);
    }
    QCOMPARE(m_desktop->List().Records().TotalCount(), 2);
    const QSize smallest = window.minimumSizeHint();
    QVERIFY2(smallest.width() <= 1024 && smallest.height() <= 600,
             qPrintable(u"%1x%2"_s.arg(smallest.width()).arg(smallest.height())));
    QCOMPARE(m_desktop->TakeBoxes(), QStringList());
    QVERIFY(!m_trap.WasOpened());
  }

  void InTheBoxesOfADeletion() {
    FakeComponent::Register({});
    AddBanks(m_trap.Name());
    m_desktop->database.Execute(u"INSERT INTO Presentadores(Nombre,CodBanco,Eliminado) VALUES('{}',1,0)",
                                m_trap.Name());
    m_desktop->ChooseNode(cConstNodo().Bancos());
    m_desktop->List().selectAll();
    m_desktop->driver.Answer(QMessageBox::Yes);
    m_desktop->driver.Answer(QMessageBox::Ok);
    m_desktop->Action("actDelete").trigger();
    const QStringList boxes = m_desktop->TakeBoxes();
    QCOMPARE(boxes.size(), 2);
    QVERIFY(boxes[0].section(u'|', 3).contains(m_trap.Name()));
    QVERIFY(boxes[1].section(u'|', 3).contains(m_trap.Name()));
    QVERIFY(!m_trap.WasOpened());
  }

  void InErrorsAndLocks() {
    m_desktop->driver.Answer(QMessageBox::Ok);
    host::ShowError(nullptr, m_trap.Name(), m_trap.Name(), automation::Error(5, m_trap.Name(), m_trap.Name()));
    m_desktop->database.Execute(
        u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario, Equipo, Proceso) VALUES (7, '{0}', 1, "
        u"'{0}', '{0}', 1)",
        m_trap.Name());
    host::LocksDialog locks(m_desktop->Session(), nullptr);
    m_desktop->driver.Answer(QMessageBox::No);
    m_desktop->driver.On("locksDialog", [](const support::DialogUser& dialog) {
      dialog.Dialog()->grab();
      dialog.Press("releaseLock");
      dialog.Close();
    });
    locks.exec();
    QCOMPARE(m_desktop->TakeBoxes().size(), 2);
    QVERIFY(!m_trap.WasOpened());
  }

 private:
  void AddBanks(const QString& name) const {
    m_desktop->database.Execute(u"DELETE FROM Bancos");
    for (const int id : {1, 2}) {
      m_desktop->database.Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre,Eliminado) VALUES({},'{}','{}',0)", id,
                                  QString::number(id), name);
    }
  }

  support::TrapFile m_trap;
  std::unique_ptr<TestDesktop> m_desktop;
};

KEL_TEST(tst_host_hostile_names);
#include "tst_host_hostile_names.moc"
