#include "support/Driver.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QTest>
#include <QTextStream>

#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;

using automation::Call;
using automation::Ref;
using support::ErrorOf;
using support::TestDatabase;

namespace {

// One user of the database: a session, its connection and a services object.
class User {
 public:
  User(const QString& connectionString, int id, const QString& name)
      : m_connection(database::CreateConnection(connectionString)) {
    m_connection->Open();
    m_session.connection = m_connection.get();
    m_session.userId = id;
    m_session.userName = name;
    m_session.title = u"Benefactores"_s;
    m_session.showRefusedLocks = false;
    host::RegisterClasses(m_session);
    m_api = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  }
  ~User() { host::UnregisterClasses(); }

  /// Whether this user holds the record now.
  bool Lock(int key) {
    bool held = false;
    const bool refused =
        Call(m_api.get(), "BloqueoRegistro", m_api.get(), u"frmBanco"_s, u"IDBanco"_s, key, Ref(held)).toBool();
    if (held == refused) {
      throw automation::Error(5, u"the result and the flag contradict each other"_s);
    }
    return held;
  }

  void Unlock(int key) { Call(m_api.get(), "DesbloqueoRegistro", m_api.get(), u"frmBanco"_s, u"IDBanco"_s, key); }

  host::Session& Session() { return m_session; }
  QObject* Api() { return m_api.get(); }

 private:
  std::unique_ptr<adodb::Connection> m_connection;
  host::Session m_session;
  std::unique_ptr<QObject> m_api;
};

// The other program: locks the records 1 to `count` as user 2, prints which it got, and keeps them until its input
// ends.
int RunHolder(const QString& connectionString, int count) {
  User user(connectionString, 2, u"Otra"_s);
  QTextStream out(stdout);
  for (int key = 1; key <= count; ++key) {
    if (user.Lock(key)) {
      out << key << ' ';
    }
  }
  out << "\n" << Qt::flush;
  QTextStream(stdin).readLine();
  return 0;
}

class Holder {
 public:
  Holder(const QString& connectionString, int count) {
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationFilePath(), {u"--holder"_s, connectionString, QString::number(count)});
  }
  ~Holder() { Kill(); }

  /// The records that it holds, once it has tried all.
  QList<int> Held() {
    QElapsedTimer timer;
    for (timer.start(); !m_process.canReadLine() && timer.elapsed() < 30000;) {
      m_process.waitForReadyRead(1000);
    }
    QList<int> keys;
    for (const QByteArray& key : m_process.readLine().trimmed().split(' ')) {
      if (!key.isEmpty()) {
        keys.append(key.toInt());
      }
    }
    return keys;
  }

  void Kill() {
    m_process.kill();
    m_process.waitForFinished();
  }

  qint64 Id() const { return m_process.processId(); }

 private:
  QProcess m_process;
};

// What the contenders of one record share.
struct Contest {
  std::atomic<int> holder = 0;  // its process
  std::atomic<int> wanted = 0;
  std::atomic<int> taken = 0;
  std::atomic<int> collisions = 0;
  std::atomic<int> errors = 0;
};

// Takes and releases record 1 until it was taken often enough.
void Contend(const QString& connectionString, Contest& contest) {
  User user(connectionString, int(getpid()), u"Otra"_s);
  while (contest.taken < contest.wanted) {
    try {
      if (!user.Lock(1)) {
        continue;
      }
      int self = int(getpid());
      contest.holder = self;
      ++contest.taken;
      // Whoever came in between has left its own number.
      contest.collisions += contest.holder.compare_exchange_strong(self, 0) ? 0 : 1;
      user.Unlock(1);
    } catch (const automation::Error& error) {
      qWarning("%s", error.what());
      ++contest.errors;
    }
  }
}

pid_t StartContender(const QString& connectionString, Contest& contest) {
  const pid_t child = fork();
  if (child == 0) {
    Contend(connectionString, contest);
    _exit(0);
  }
  return child;
}

// Eight processes on one record. With `kills`, that many of them are killed and replaced one after the other; the
// others go on. Prints how often the record was taken, by two at once, and with an error.
int RunContenders(const QString& connectionString, int acquisitions, int kills) {
  void* shared = mmap(nullptr, sizeof(Contest), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  auto& contest = *new (shared) Contest;
  contest.wanted = kills > 0 ? std::numeric_limits<int>::max() : acquisitions;
  std::array<pid_t, 8> contenders{};
  std::ranges::generate(contenders, [&] { return StartContender(connectionString, contest); });
  for (int i = 0; i < kills; ++i) {
    pid_t& victim = contenders[std::size_t(i) % contenders.size()];
    const int before = contest.taken;
    // The survivors and a newcomer get the record that the one before may have left behind.
    while (contest.taken <= before) {
      usleep(200);
    }
    usleep(useconds_t(i % 7) * 300);
    kill(victim, SIGKILL);
    waitpid(victim, nullptr, 0);
    victim = StartContender(connectionString, contest);
  }
  if (kills > 0) {
    contest.wanted = contest.taken + 20;
  }
  for (const pid_t contender : contenders) {
    waitpid(contender, nullptr, 0);
  }
  QTextStream(stdout) << contest.taken << ' ' << contest.collisions << ' ' << contest.errors << "\n";
  return 0;
}

}  // namespace

class tst_record_locks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();

  void OneHolderAtATime();
  void OwnSecondTrySucceeds();
  void RecordsAreApart();
  void HolderIsTold();
  void SessionConnectionServesWhereNoneIsGiven();
  void AnotherProcessIsRefused();
  void ProcessesNeverShareARecord_data();
  void ProcessesNeverShareARecord();
  void LockOfAKilledProcessIsTakenOver();
  void LocksThatCannotBeJudgedStay_data();
  void LocksThatCannotBeJudgedStay();
  void EveryPartOfTheStartCounts_data();
  void EveryPartOfTheStartCounts();
  void AZombieHasEnded();
  void AHiddenProcessHasNotEnded();
  void LocksAreListedAndReleased();
  void ManyOnOneRecord_data();
  void ManyOnOneRecord();
  void WithoutAConnection();
  void DatabaseErrorsPass();

 private:
  std::unique_ptr<TestDatabase> m_database;
};

void tst_record_locks::init() {
  m_database = std::make_unique<TestDatabase>();
}

void tst_record_locks::OneHolderAtATime() {
  User first(m_database->ConnectionString(), 1, u"Ana"_s);
  User second(m_database->ConnectionString(), 2, u"Blas"_s);
  QVERIFY(first.Lock(5));
  QVERIFY(!second.Lock(5));
  second.Unlock(5);
  QVERIFY(!second.Lock(5));
  first.Unlock(5);
  QVERIFY(second.Lock(5));
  QVERIFY(!first.Lock(5));
}

void tst_record_locks::OwnSecondTrySucceeds() {
  User user(m_database->ConnectionString(), 1, u"D'Ors \"el bueno\""_s);
  QVERIFY(user.Lock(5));
  QVERIFY(user.Lock(5));
  QCOMPARE(m_database->Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 1);
  user.Unlock(5);
  QCOMPARE(m_database->Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
  user.Unlock(5);
}

void tst_record_locks::RecordsAreApart() {
  User first(m_database->ConnectionString(), 1, u"Ana"_s);
  User second(m_database->ConnectionString(), 2, u"Blas"_s);
  QVERIFY(first.Lock(4));
  QVERIFY(first.Lock(5));
  QVERIFY(second.Lock(6));
  for (const QString& column : {u"IDAlgo"_s, u"IDPais"_s}) {
    bool held = false;
    Call(second.Api(), "BloqueoRegistro", nullptr, u"frmPais"_s, column, 5, Ref(held));
    QVERIFY(held);
  }
  first.Unlock(4);
  QVERIFY(!second.Lock(5));
  QVERIFY(second.Lock(4));
}

void tst_record_locks::HolderIsTold() {
  User first(m_database->ConnectionString(), 1, u"Ana <b>Ruiz</b>"_s);
  User second(m_database->ConnectionString(), 2, u"Blas"_s);
  second.Session().showRefusedLocks = true;
  QVERIFY(first.Lock(5));
  support::Driver driver;
  driver.Answer(QMessageBox::Ok);
  QVERIFY(!second.Lock(5));

  const std::optional<host::LockHolder> holder = second.Session().lastRefusal;
  QVERIFY(holder.has_value());
  QCOMPARE(holder->userId, 1);
  QCOMPARE(holder->userName, u"Ana <b>Ruiz</b>"_s);
  QCOMPARE(holder->process, host::CurrentProcess());
  QVERIFY(qAbs(holder->since.secsTo(QDateTime::currentDateTimeUtc())) < 600);

  QCOMPARE(driver.TakeProblems(), QStringList());
  const QStringList boxes = driver.TakeBoxes();
  QCOMPARE(boxes.size(), 1);
  QCOMPARE(boxes.constFirst(),
           u"Benefactores|informacion|Lo está modificando «Ana <b>Ruiz</b>» en «%1» desde las %2."
           "\n\nSe abre solo para consulta: no podrá guardar cambios hasta que quede libre."_s.arg(
               holder->process.machine, holder->since.toLocalTime().toString(u"HH:mm"_s)));

  first.Unlock(5);
  QVERIFY(second.Lock(5));
  QVERIFY(!second.Session().lastRefusal.has_value());
  QCOMPARE(driver.TakeBoxes(), QStringList());
}

void tst_record_locks::SessionConnectionServesWhereNoneIsGiven() {
  User user(m_database->ConnectionString(), 1, u"Ana"_s);
  QObject withoutConnection;
  for (QObject* services : std::initializer_list<QObject*>{nullptr, &withoutConnection}) {
    bool held = false;
    QObject* reference = services;
    Call(user.Api(), "BloqueoRegistro", Ref(reference), u"frmBanco"_s, u"IDBanco"_s, 5, Ref(held));
    QVERIFY(held);
    QCOMPARE(reference, services);
  }
}

void tst_record_locks::AnotherProcessIsRefused() {
  User user(m_database->ConnectionString(), 2, u"Otra"_s);
  QVERIFY(user.Lock(1));
  Holder holder(m_database->ConnectionString(), 2);
  QCOMPARE(holder.Held(), QList<int>{2});
  // The same user in two programs is two holders.
  user.Unlock(2);
  QVERIFY(!user.Lock(2));
  QCOMPARE(user.Session().lastRefusal->process.processId, int(holder.Id()));
}

void tst_record_locks::ProcessesNeverShareARecord_data() {
  QTest::addColumn<bool>("leftBehind");
  QTest::newRow("free records") << false;
  QTest::newRow("records of a killed program") << true;
}

void tst_record_locks::ProcessesNeverShareARecord() {
  QFETCH(bool, leftBehind);
  constexpr int records = 60;
  if (leftBehind) {
    Holder killed(m_database->ConnectionString(), records);
    QCOMPARE(killed.Held().size(), records);
  }
  std::vector<std::unique_ptr<Holder>> holders;
  for (int i = 0; i < 4; ++i) {
    holders.push_back(std::make_unique<Holder>(m_database->ConnectionString(), records));
  }
  QList<int> all;
  for (const auto& holder : holders) {
    all += holder->Held();
  }
  std::sort(all.begin(), all.end());
  QCOMPARE(all.size(), records);
  QVERIFY(std::adjacent_find(all.begin(), all.end()) == all.end());
}

void tst_record_locks::LockOfAKilledProcessIsTakenOver() {
  User user(m_database->ConnectionString(), 1, u"Ana"_s);
  Holder holder(m_database->ConnectionString(), 1);
  QCOMPARE(holder.Held(), QList<int>{1});
  QVERIFY(!user.Lock(1));
  const auto isHeld = [&] { return user.Session().Locks().HeldByAnother(u"IDBanco"_s, 1).has_value(); };
  QVERIFY(isHeld());
  holder.Kill();
  // The machine was given another name meanwhile, as some networks do.
  m_database->Execute(u"UPDATE BloqueoRegistros SET Equipo='antes-se-llamaba-asi'");
  QVERIFY(!isHeld());
  QVERIFY(user.Lock(1));
  QCOMPARE(m_database->Id(u"SELECT codUsuario FROM BloqueoRegistros WHERE ValorID=1"), 1);
}

// Each row spoils the lock of a process that has ended in a way that leaves it unknown whether it has.
void tst_record_locks::LocksThatCannotBeJudgedStay_data() {
  QTest::addColumn<QString>("assignment");
  QTest::newRow("no start") << u"InicioProceso=''"_s;
  QTest::newRow("foreign start") << u"InicioProceso='12:30'"_s;
  QTest::newRow("no process") << u"Proceso=0"_s;
}

void tst_record_locks::LocksThatCannotBeJudgedStay() {
  QFETCH(QString, assignment);
  User user(m_database->ConnectionString(), 1, u"Ana"_s);
  Holder holder(m_database->ConnectionString(), 1);
  QCOMPARE(holder.Held(), QList<int>{1});
  holder.Kill();
  m_database->Execute(u"UPDATE BloqueoRegistros SET Sesion=0, {}", adodb::Verbatim{assignment});
  QVERIFY(!user.Lock(1));
  QVERIFY(!user.Session().lastRefusal->Description().isEmpty());
}

// The parts of the start that are others than this process's, on a machine that has an identity or none.
void tst_record_locks::EveryPartOfTheStartCounts_data() {
  QTest::addColumn<QString>("machine");
  QTest::addColumn<QList<int>>("parts");
  QTest::addColumn<bool>("ended");
  for (const QString& machine : {u"11111111"_s, QString()}) {
    const auto row = [&](const char* name, const QList<int>& parts, bool ended) {
      QTest::addRow("%s%s", machine.isEmpty() ? "no identity, " : "", name) << machine << parts << ended;
    };
    row("another machine of the same name", {0, 3}, false);
    row("before the last boot", {1}, !machine.isEmpty());
    row("another namespace of process numbers", {2, 3}, false);
    row("an earlier process of the same number", {3}, true);
    row("this process", {}, false);
  }
}

void tst_record_locks::EveryPartOfTheStartCounts() {
  QFETCH(const QString, machine);
  QFETCH(const QList<int>, parts);
  host::ProcessIdentity here = host::CurrentProcess();
  QVERIFY(here.start.size() <= 40);
  QStringList start = here.start.split(u' ');
  QCOMPARE(start.size(), 4);
  start[0] = machine;
  here.start = start.join(u' ');
  for (const int part : parts) {
    start[part] = u"0000"_s;
  }
  host::ProcessIdentity holder = here;
  holder.start = start.join(u' ');
  QTEST(host::HasEnded(holder, here), "ended");
}

// A system may hide the processes of other users: one that cannot be looked at has not ended.
void tst_record_locks::AHiddenProcessHasNotEnded() {
  const host::ProcessIdentity self = host::CurrentProcess();
  const pid_t child = fork();
  if (child == 0) {
    const QByteArray folder = "/proc/" + QByteArray::number(self.processId);
    const bool hidden = (unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) &&
                        mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                        mount("none", folder.constData(), "tmpfs", 0, nullptr) == 0;
    _exit(!hidden ? 2 : host::HasEnded(self, self) ? 1 : 0);
  }
  int status = 0;
  QCOMPARE(waitpid(child, &status, 0), child);
  if (WEXITSTATUS(status) == 2) {
    QSKIP("this system lets nobody hide a process");
  }
  QCOMPARE(WEXITSTATUS(status), 0);
}

void tst_record_locks::LocksAreListedAndReleased() {
  User first(m_database->ConnectionString(), 1, u"Ana"_s);
  User second(m_database->ConnectionString(), 2, u"Blas"_s);
  QVERIFY(first.Lock(5));
  QVERIFY(second.Lock(4));
  m_database->Execute(u"UPDATE BloqueoRegistros SET Desde='2020-01-02T03:04:05Z' WHERE ValorID=4");
  // As another program may write it.
  m_database->Execute(u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Desde) VALUES (7,'IDPais',1,'x')");
  host::RecordLocks locks(m_database->Connection(), 9, u"Eva"_s);
  const QList<host::LockHolder> all = locks.All();
  QStringList listed;
  for (const host::LockHolder& holder : all) {
    listed.append(u"%1 %2 %3"_s.arg(holder.keyColumn, QString::number(holder.key), holder.userName));
  }
  QCOMPARE(listed, (QStringList{u"IDBanco 4 Blas"_s, u"IDBanco 5 Ana"_s, u"IDPais 1 "_s}));
  const QString moment =
      QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5), Qt::UTC).toLocalTime().toString(u"dd/MM/yyyy 'a las' HH:mm"_s);
  QCOMPARE(all[0].Description(),
           u"Lo está modificando «Blas» en «%1» desde el %2"_s.arg(all[0].process.machine, moment));
  QCOMPARE(all[2].Description(), u"Lo está modificando otro usuario"_s);

  QVERIFY(locks.ReleaseOf(all[0]));
  QVERIFY(locks.ReleaseOf(all[2]));
  QVERIFY(first.Lock(4));
  // It is somebody else's now, whatever its number.
  m_database->Execute(u"UPDATE BloqueoRegistros SET IDBloqueoRegistro={} WHERE ValorID=4", all[0].number);
  QVERIFY(!locks.ReleaseOf(all[0]));
  QCOMPARE(locks.All().size(), 2);
}

void tst_record_locks::ManyOnOneRecord_data() {
  QTest::addColumn<int>("acquisitions");
  QTest::addColumn<int>("kills");
  const int kills = qEnvironmentVariableIntValue("KEL_LOCK_KILLS");
  QTest::newRow("who lose a race try again") << 1600 << 0;
  QTest::newRow("some of them killed") << 0 << (kills > 0 ? kills : 60);
}

// Never two holders, never an error.
void tst_record_locks::ManyOnOneRecord() {
  QFETCH(int, acquisitions);
  QFETCH(int, kills);
  QProcess contenders;
  contenders.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  contenders.start(QCoreApplication::applicationFilePath(), {u"--contenders"_s, m_database->ConnectionString(),
                                                             QString::number(acquisitions), QString::number(kills)});
  QVERIFY(contenders.waitForFinished(60000 + kills * 1000));
  const QList<QByteArray> result = contenders.readAll().trimmed().split(' ');
  QCOMPARE(result.size(), 3);
  QVERIFY2(result[0].toInt() >= std::max(acquisitions, kills), result[0].constData());
  QCOMPARE(result[1].toInt(), 0);
  QCOMPARE(result[2].toInt(), 0);
}

// It only waits for its parent to take notice.
void tst_record_locks::AZombieHasEnded() {
  const pid_t child = fork();
  if (child == 0) {
    _exit(0);
  }
  siginfo_t ended = {};
  QCOMPARE(waitid(P_PID, id_t(child), &ended, WEXITED | WNOWAIT), 0);
  QFile stat(u"/proc/%1/stat"_s.arg(child));
  QVERIFY(stat.open(QIODevice::ReadOnly));
  constexpr int startField = 21;
  host::ProcessIdentity zombie = host::CurrentProcess();
  zombie.processId = child;
  QStringList start = zombie.start.split(u' ');
  start[3] = QString::fromLatin1(stat.readAll().split(' ').value(startField));
  zombie.start = start.join(u' ');
  QVERIFY(host::HasEnded(zombie, host::CurrentProcess()));
  waitpid(child, nullptr, 0);
}

void tst_record_locks::WithoutAConnection() {
  host::Session session;
  host::RegisterClasses(session);
  const auto api = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  bool held = true;
  QCOMPARE(ErrorOf([&] { Call(api.get(), "BloqueoRegistro", nullptr, u"frmBanco"_s, u"IDBanco"_s, 1, Ref(held)); }),
           int(automation::ObjectNotSet));
  host::UnregisterClasses();
}

// What is refused for another reason than a holder must not look like a lock.
void tst_record_locks::DatabaseErrorsPass() {
  User user(m_database->ConnectionString(), 1, u"Ana"_s);
  const auto closed = database::CreateConnection(u"Motor=sqlite;Archivo=/no/hay/carpeta/kel.db"_s);
  user.Session().connection = closed.get();
  QVERIFY(ErrorOf([&user] { user.Lock(1); }) != 0);
  QVERIFY(!user.Session().lastRefusal.has_value());
}

KEL_TEST(tst_record_locks);
KEL_TEST_HELPER(holder,
                [](const QStringList& arguments) { return RunHolder(arguments.value(0), arguments.value(1).toInt()); });

KEL_TEST_HELPER(contenders, [](const QStringList& arguments) {
  return RunContenders(arguments.value(0), arguments.value(1).toInt(), arguments.value(2).toInt());
});

#include "tst_record_locks.moc"
