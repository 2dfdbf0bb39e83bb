#include "support/Driver.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include "host/desktop/RecordDialogs.h"
#include "host/records/ChangeLog.h"
#include "host/records/Deletion.h"
#include "host/records/DeletionLog.h"
#include "host/records/OfficeConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"

#include <QComboBox>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QThread>
#include <QWidget>

#include <cstdio>

using namespace Qt::StringLiterals;

/// Two programs with the component's own dialogs at the same fifty records. KEL_ACTS=1000 makes each of them do that
/// many things instead of 60.
class tst_random_acts : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void NothingIsSavedInVainWithoutAWord();
};

namespace {

constexpr int firstId = 901;
constexpr int countries = 25;
constexpr int provinces = 25;

// Somebody who does whatever comes to mind, by a list that is as old as the program.
class Person {
 public:
  Person(const QString& connectionString, quint32 seed)
      : m_random(seed), m_office(database::CreateConnection(connectionString), m_session) {
    m_session.connection = &m_office;
    m_session.office = &m_office;
    m_session.userId = static_cast<int>(seed);
    m_session.userName = u"persona %1"_s.arg(seed);
    m_session.showRefusedLocks = false;
    host::RegisterClasses(m_session);
    m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
    m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
    m_dialogs = std::make_unique<host::RecordDialogs>(*m_bridge, &m_window);
    QObject::connect(m_dialogs.get(), &host::RecordDialogs::Told, &m_window,
                     [](const host::StripText& strip) { Say(strip.subject + u' ' + strip.text); });
  }
  ~Person() { host::UnregisterClasses(); }
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;

  void Act() {
    const int act = Below(10);
    const bool atCountry = Below(2) == 0;
    const host::Node& node = *host::FindNode(atCountry ? cConstNodo().Paises() : cConstNodo().Provincias());
    const int id = firstId + Below(atCountry ? countries : provinces);
    if (act < 5) {
      Modify(node, id);
    } else if (act < 8) {
      host::DeleteRecords(*m_bridge, node, {{id, u"%1 %2"_s.arg(node.record).arg(id)}}, [](int) { return true; });
    } else {
      Recover();
    }
    // A dialog that is not opened has its strip.
    const QStringList problems = m_driver.TakeProblems().filter(QRegularExpression(u"^(?!never shown)"_s));
    for (const QString& problem : m_driver.TakeBoxes() + problems) {
      Say(u"! "_s + problem);
    }
  }

 private:
  static void Say(const QString& line) { std::puts(line.toUtf8().constData()); }
  int Below(int limit) { return static_cast<int>(m_random.bounded(limit)); }

  void Modify(const host::Node& node, int id) {
    const bool isCountry = node.id == cConstNodo().Paises();
    const char* dialog = isCountry ? "frmPais" : "frmProvincia";
    m_driver.On(dialog, [this, isCountry](const support::DialogUser& user) { Fill(user, isCountry); });
    m_dialogs->Modify(node, id, node.record);
  }

  void Fill(const support::DialogUser& user, bool isCountry) {
    const QPointer<QDialog> dialog = user.Dialog();
    const char* accept = isCountry ? "cmdPais_0" : "cmdProvincia_0";
    if (user.IsEnabled(accept)) {
      user.Type(isCountry ? "txtPais" : "txtProvincia", u"nombre %1"_s.arg(Below(1'000'000)));
      if (!isCountry) {
        auto* list = user.Find<QComboBox>("cboPais");
        list->setCurrentIndex(Below(list->count()));
      }
      // Meanwhile the other one does something.
      QThread::msleep(static_cast<unsigned long>(Below(30)));
      user.Press(accept);
    }
    if (dialog && dialog->isVisible()) {
      user.Press(isCountry ? "cmdPais_1" : "cmdProvincia_1");
    }
  }

  void Recover() {
    const auto notes = adodb::Execute(m_bridge->OpenConnection(), u"SELECT IDEliminacion FROM Eliminaciones");
    QList<int> numbers;
    for (; !notes->AtEnd(); notes->MoveNext()) {
      numbers.append(automation::CLng(notes->Field(0)));
    }
    if (!numbers.isEmpty()) {
      host::DeletionLog(m_session).Recover(numbers[Below(static_cast<int>(numbers.size()))]);
    }
  }

  QRandomGenerator m_random;
  host::Session m_session;
  host::OfficeConnection m_office;
  QWidget m_window;
  support::Driver m_driver;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  std::unique_ptr<host::RecordDialogs> m_dialogs;
};

int ActAsHelper(const QStringList& arguments) {
  Person person(arguments[0], arguments[1].toUInt());
  for (int act = 0; act < arguments[2].toInt(); ++act) {
    try {
      person.Act();
    } catch (const std::exception& error) {
      std::printf("! %s\n", error.what());
    }
  }
  return 0;
}

// Saves of records that were deleted then.
QStringList SavesIntoNothing(const support::TestDatabase& database) {
  QStringList saves;
  QMap<QString, int> last;
  for (const QString& note : database.Query(u"SELECT Tabla, ValorID, Clase FROM Cambios ORDER BY IDCambio")) {
    const QString record = note.section(u'|', 0, 1);
    const int kind = note.section(u'|', 2).toInt();
    if (kind == static_cast<int>(host::ChangeKind::Changed) &&
        last.value(record) == static_cast<int>(host::ChangeKind::Deleted)) {
      saves.append(note);
      continue;
    }
    last[record] = kind;
  }
  return saves;
}

}  // namespace

void tst_random_acts::NothingIsSavedInVainWithoutAWord() {
  const int wanted = qEnvironmentVariableIntValue("KEL_ACTS");
  const QString acts = QString::number(wanted > 0 ? wanted : 60);
  const support::TestDatabase database;
  qputenv("KEL_CLASES", database.Path(u"clases.ini"_s).toLocal8Bit());
  QVERIFY(automation::ComponentLibrary(QStringLiteral(KEL_COMPONENT)).Register());
  // The lists offer these countries only.
  database.Execute(u"UPDATE Paises SET Eliminado=-1");
  for (int id = firstId; id < firstId + provinces; ++id) {
    if (id < firstId + countries) {
      database.Execute(u"INSERT INTO Paises(IDPais,Nombre) VALUES({},'País')", id);
    }
    database.Execute(u"INSERT INTO Provincias(IDProvincia,Nombre,CodPais) VALUES({},'Provincia',{})", id,
                     firstId + id % countries);
  }
  QProcess people[2];
  for (int person = 0; person < 2; ++person) {
    people[person].setProcessChannelMode(QProcess::ForwardedErrorChannel);
    people[person].start(QCoreApplication::applicationFilePath(),
                         {u"--act"_s, database.ConnectionString(), QString::number(person + 1), acts});
  }
  QString said;
  for (QProcess& person : people) {
    QVERIFY(person.waitForFinished(acts.toInt() * 1000));
    QCOMPARE(person.exitCode(), 0);
    said += QString::fromUtf8(person.readAllStandardOutput());
  }
  const QStringList lines = said.split(u'\n', Qt::SkipEmptyParts);
  QCOMPARE(lines.filter(u"! "_s).join(u'\n'), QString());
  QCOMPARE(SavesIntoNothing(database), QStringList());
  const QStringList orphans = database.Query(
      u"SELECT IDProvincia FROM Provincias INNER JOIN Paises ON CodPais=IDPais WHERE IDProvincia>={} AND "
      u"Provincias.Eliminado=0 AND Paises.Eliminado<>0",
      firstId);
  for (const QString& orphan : orphans) {
    QVERIFY2(!lines.filter(u"stripProvincias_%1 "_s.arg(orphan)).isEmpty(), qPrintable(orphan));
  }
  qInfo("saves %d, strips %d, of saved records %d", database.Id(u"SELECT COUNT(*) FROM Cambios WHERE Clase=2"),
        static_cast<int>(lines.size()), static_cast<int>(lines.filter(u"se ha guardado"_s).size()));
  QCOMPARE(database.Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
}

KEL_TEST(tst_random_acts);
KEL_TEST_HELPER(act, ActAsHelper);
#include "tst_random_acts.moc"
