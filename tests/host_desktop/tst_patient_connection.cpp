#include "TestDesktop.h"
#include "support/Relay.h"
#include "support/TestProgram.h"

#include "host/desktop/PatientConnection.h"
#include "host/desktop/ProgramEnd.h"
#include "host/services/cPrincipal.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <chrono>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds longest = 1500ms;

/// The number of the error that a write ends with, 0 for none.
int ErrorOf(adodb::Connection& connection) {
  try {
    connection.Execute(u"UPDATE Bancos SET Nombre='x'"_s);
    return 0;
  } catch (const automation::Error& error) {
    return error.Number();
  }
}

QWidget* Box() {
  QWidget* top = QApplication::activeModalWidget();
  return top != nullptr && top->objectName() == u"databaseWait" ? top : nullptr;
}

}  // namespace

/// A busy database is waited for once, where the user sees it and can end it.
class tst_patient_connection : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    m_database = std::make_unique<support::TestDatabase>();
    m_other = m_database->Connect();
    m_connection = std::make_unique<host::PatientConnection>(
        database::CreateConnection(m_database->ConnectionString(), host::PatientConnection::tryTime), longest);
    m_connection->Open();
    m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')");
    m_other->BeginTrans();
    m_other->Execute(u"UPDATE Bancos SET Nombre='b'"_s);
    m_time.start();
  }

  void cleanup() {
    m_connection.reset();
    m_other.reset();
    m_database.reset();
  }

  void WaitsOnceAndSaysSo() {
    bool shown = false;
    QTimer::singleShot(900ms, this, [&] { shown = Box() != nullptr; });
    QCOMPARE(ErrorOf(*m_connection), adodb::DatabaseLocked);
    QVERIFY(m_time.elapsed() >= longest.count());
    QVERIFY(shown);
    // What follows is told the same at once.
    m_time.start();
    QCOMPARE(ErrorOf(*m_connection), adodb::DatabaseLocked);
    QVERIFY(m_time.elapsed() < longest.count());
    m_other->RollbackTrans();
    QCOMPARE(ErrorOf(*m_connection), 0);
  }

  void GoesOnWhenTheOtherIsDone() {
    QTimer::singleShot(800ms, this, [this] { m_other->RollbackTrans(); });
    QCOMPARE(ErrorOf(*m_connection), 0);
    QCOMPARE(Box(), nullptr);
  }

  void CancelEndsTheWait() {
    QTimer::singleShot(600ms, this, [] { Box()->findChild<QPushButton*>(u"giveUp"_s)->click(); });
    QCOMPARE(ErrorOf(*m_connection), adodb::DatabaseLocked);
    QVERIFY(m_time.elapsed() < longest.count());
  }

  void ASignalEndsTheWait() {
    TestDesktop desktop;
    const host::ProgramEnd end(desktop.Bridge());
    // Not before the box has been looked at, or the driver would close it.
    desktop.driver.On("databaseWait", [](const support::DialogUser& dialog) {
      raise(SIGTERM);
      QTRY_VERIFY(!dialog.Dialog()->isVisible());
    });
    QCOMPARE(ErrorOf(*m_connection), adodb::DatabaseLocked);
    QVERIFY(m_time.elapsed() < longest.count());
  }

  void AServerIsWaitedForUntilItIsBack() {
    if (m_database->Server() == nullptr) {
      QSKIP("a file does not come back");
    }
    m_other->RollbackTrans();
    support::Relay relay(m_database->ConnectionString());
    host::PatientConnection connection(
        database::CreateConnection(relay.ConnectionString(), host::PatientConnection::tryTime), longest);
    connection.Open();
    relay.BeAway(true);
    m_database->Server()->Run(
        u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE application_name LIKE 'kel %' AND "
        "datname=current_database()"_s);
    bool shown = false;
    QTimer::singleShot(longest + 700ms, this, [&] {
      shown = Box() != nullptr;
      relay.BeAway(false);
    });
    QCOMPARE(ErrorOf(connection), 0);
    QVERIFY(shown);
  }

  // The lock of a dialog that met a busy database does not stay behind.
  void ALockIsReleasedLater() {
    m_other->RollbackTrans();
    host::Session session;
    host::OfficeConnection office(std::move(m_connection), session);
    session.connection = &office;
    session.office = &office;
    session.userId = 1;
    session.Locks().Take(u"IDBanco"_s, 1);
    m_other->BeginTrans();
    host::cPrincipal services(session);
    QObject* none = nullptr;
    services.DesbloqueoRegistro(none, u"frmBanco"_s, u"IDBanco"_s, 1);
    QVERIFY(m_time.elapsed() < 2 * longest.count());
    // Wanted again it stays, and goes when it is not.
    bool held = false;
    for (const QString& kept : {u"IDBanco/IDPais"_s, u"IDPais"_s}) {
      services.BloqueoRegistro(none, u"frmBanco"_s, u"IDBanco"_s, 1, held);
      QVERIFY(held);
      if (kept == u"IDPais"_s) {
        host::ComponentBridge(services, session).ReleaseLock(u"IDBanco"_s, 1);
      }
      m_other->RollbackTrans();
      services.BloqueoRegistro(none, u"frmPais"_s, u"IDPais"_s, 2, held);
      QCOMPARE(m_database->Query(u"SELECT campoID FROM BloqueoRegistros ORDER BY campoID").join(u'/'), kept);
      m_other->BeginTrans();
    }
  }

 private:
  std::unique_ptr<support::TestDatabase> m_database;
  std::unique_ptr<adodb::Connection> m_other;
  std::unique_ptr<host::PatientConnection> m_connection;
  QElapsedTimer m_time;
};

KEL_TEST(tst_patient_connection);
#include "tst_patient_connection.moc"
