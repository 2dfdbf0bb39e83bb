#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"
#include "support/TrapFile.h"

#include "host/desktop/LocksDialog.h"
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

  void InTheWindow() {
    m_desktop->Session().title = m_trap.Name();
    AddBanks();
    m_desktop->ChooseNode(cConstNodo().Bancos());
    host::MainWindow& window = m_desktop->Window();
    window.statusBar()->showMessage(m_trap.Name());
    m_desktop->SearchBox().setText(m_trap.Name());
    window.grab();
    for (QWidget* part : window.findChildren<QWidget*>()) {
      QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), part->mapToGlobal(QPoint(2, 2)));
      QApplication::sendEvent(part, &help);
    }
    QVERIFY(!m_trap.WasOpened());
  }

  void InTheBoxesOfADeletion() {
    FakeComponent::Register({});
    AddBanks();
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
  void AddBanks() const {
    m_desktop->database.Execute(u"DELETE FROM Bancos");
    for (const int id : {1, 2}) {
      m_desktop->database.Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre,Eliminado) VALUES({},'{}','{}',0)", id,
                                  QString::number(id), m_trap.Name());
    }
  }

  support::TrapFile m_trap;
  std::unique_ptr<TestDesktop> m_desktop;
};

KEL_TEST(tst_host_hostile_names);
#include "tst_host_hostile_names.moc"
