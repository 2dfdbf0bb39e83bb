#include "database/Maintenance.h"
#include "host/access/Door.h"
#include "host/access/RightsWatch.h"
#include "host/access/UserRules.h"
#include "host/records/OfficeConnection.h"
#include "host/records/OfficeSettings.h"
#include "platform/automation/Error.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using host::Account;
using host::Door;
using host::Rights;
using support::TestDatabase;

namespace {

/// An administrator at work on a database.
class Administrator {
 public:
  Administrator(const TestDatabase& database, int id)
      : m_office(std::make_unique<host::OfficeConnection>(database.Connect(), session)) {
    session.userId = id;
    session.userName = u"a%1"_s.arg(id);
    session.connection = m_office.get();
    session.office = m_office.get();
  }

  host::UserRules Rules() { return host::UserRules(session); }

  host::Session session;

 private:
  std::unique_ptr<host::OfficeConnection> m_office;
};

template <typename Work>
QString Refusal(Work work) {
  try {
    work();
  } catch (const automation::Error& error) {
    return error.Description();
  }
  return {};
}

}  // namespace

/// Who may do what to users, what is read of them however their rows were spoiled, and how wrong passwords are counted.
class tst_users : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void RowsAreInStep();
  void Rules_data();
  void Rules();
  void TwoAdministratorsAtOnce();
  void SpoiledRows();
  void PasswordsAreNoted();
  void RightsThatAreLost_data();
  void RightsThatAreLost();
  void Waits();
  void TwoProgramsGuess();
  void AClockThatIsSet();
  void WhatCantBeWritten();

 private:
  int AddUser(const QString& name, Rights rights) const {
    return Administrator(*m_database, 1).Rules().Add({name, u"Persona "_s + name, rights});
  }
  Account Read(int id) const { return host::ReadAccount(m_database->Connection(), id).value_or(Account()); }
  void Guess(Door& door, int times) {
    for (int i = 0; i < times; ++i) {
      door.Begin(m_database->Connection(), u"marta"_s);
    }
  }

  std::unique_ptr<TestDatabase> m_database;
};

void tst_users::RowsAreInStep() {
  Administrator administrator(*m_database, 1);
  const int id = administrator.Rules().Add({u" inés "_s, u"Inés Sanz"_s, Rights::Viewer});
  const auto row = [&] {
    return m_database
        ->Query(u"SELECT Nombre, NombreCompleto, Administrador, TipoUsuario FROM Usuarios WHERE IDUsuario={}", id)
        .join(u'/');
  };
  QCOMPARE(row(), u"inés|Inés Sanz|Falso|2"_s);
  for (const Rights rights : {Rights::Changes, Rights::Administrator, Rights::ChangesAndDeletes, Rights::Viewer}) {
    administrator.Rules().Change(id, {u"inés"_s, u"Inés Sanz"_s, rights});
    QCOMPARE(Read(id).rights, rights);
    QCOMPARE(row(), rights == Rights::Administrator ? u"inés|Inés Sanz|Verdadero|1"_s : u"inés|Inés Sanz|Falso|2"_s);
  }
  QCOMPARE(host::FindAccount(m_database->Connection(), u" INES "_s).has_value(), false);
  QCOMPARE(host::FindAccount(m_database->Connection(), u" INÉS "_s).value_or(Account()).id, id);
}

void tst_users::Rules_data() {
  QTest::addColumn<int>("actor");
  QTest::addColumn<QString>("act");
  QTest::addColumn<QString>("refusal");
  const auto row = [](int actor, const char* act, const char* refusal) {
    QTest::addRow("%d %s", actor, act) << actor << QString::fromUtf8(act) << QString::fromUtf8(refusal);
  };
  row(1, "add", "");
  row(1, "add twice", "Ya hay un usuario");
  row(1, "add without name", "Escriba un nombre");
  row(1, "add long name", "Escriba un nombre");
  row(1, "add lines", "Escriba un nombre");
  row(1, "demote", "");
  row(1, "switch off", "");
  row(1, "demote self", "sus propios derechos");
  row(1, "switch off self", "a sí mismo");
  row(1, "password", "");
  row(1, "gone", "ha eliminado");
  row(2, "add", "ya no administra");
  row(2, "password", "ya no administra");
  row(2, "for all", "ya no administra");
  row(1, "for all", "");
  row(3, "add", "ya no administra");
  row(0, "password", "");
}

// 1 and 4 are administrators, 2 is none, 3 one who is switched off.
void tst_users::Rules() {
  QFETCH(const int, actor);
  QFETCH(const QString, act);
  AddUser(u"dos"_s, Rights::ChangesAndDeletes);
  AddUser(u"tres"_s, Rights::Administrator);
  AddUser(u"cuatro"_s, Rights::Administrator);
  Administrator(*m_database, 1).Rules().SwitchOff(3, true);
  Administrator administrator(*m_database, actor);
  const host::UserData cuatro{u"cuatro"_s, {}, Rights::Viewer};
  const QHash<QString, std::function<void(host::UserRules)>> acts{
      {u"add"_s,
       [](auto rules) {
         rules.Add({u"nuevo"_s, {}, Rights::Viewer});
       }},
      {u"add twice"_s,
       [](auto rules) {
         rules.Add({u"DOS "_s, {}, Rights::Viewer});
       }},
      {u"add without name"_s,
       [](auto rules) {
         rules.Add({u"  "_s, {}, Rights::Viewer});
       }},
      {u"add long name"_s,
       [](auto rules) {
         rules.Add({u"x"_s.repeated(10'000), {}, Rights::Viewer});
       }},
      {u"add lines"_s,
       [](auto rules) {
         rules.Add({u"a\nb"_s, {}, Rights::Viewer});
       }},
      {u"demote"_s, [&](auto rules) { rules.Change(4, cuatro); }},
      {u"switch off"_s, [](auto rules) { rules.SwitchOff(4, true); }},
      {u"demote self"_s,
       [](auto rules) {
         rules.Change(1, {u"uno"_s, {}, Rights::Changes});
       }},
      {u"switch off self"_s, [](auto rules) { rules.SwitchOff(1, true); }},
      {u"password"_s, [](auto rules) { rules.SetPassword(4, u"hash"_s); }},
      {u"for all"_s,
       [](auto rules) { rules.ChangeForAll({.idleMinutes = 15}, {.name = u"Casa"_s, .idleMinutes = 3}); }},
      {u"gone"_s, [](auto rules) { rules.SetPassword(99, u"hash"_s); }},
  };
  const auto all = [this] {
    return m_database->Query(u"SELECT * FROM Usuarios") + m_database->Query(u"SELECT * FROM Claves") +
           m_database->Query(u"SELECT Nombre, Valor FROM Ajustes");
  };
  const QStringList before = all();
  const QString said = Refusal([&] { acts[act](administrator.Rules()); });
  const QStringList now = all();
  QFETCH(const QString, refusal);
  QVERIFY2(refusal.isEmpty() ? said.isEmpty() : said.contains(refusal), qPrintable(said));
  QCOMPARE(before == now, !refusal.isEmpty());
}

void tst_users::TwoAdministratorsAtOnce() {
  const int other = AddUser(u"otra"_s, Rights::Administrator);
  Administrator one(*m_database, 1);
  Administrator two(*m_database, other);
  one.Rules().Change(other, {u"otra"_s, {}, Rights::ChangesAndDeletes});
  QVERIFY(Refusal([&] {
            two.Rules().Change(1, {u"administrador"_s, {}, Rights::Viewer});
          }).contains(u"ya no administra"));
  QCOMPARE(Read(1).rights, Rights::Administrator);
  QCOMPARE(Read(other).rights, Rights::ChangesAndDeletes);
}

// By hand, or by another program.
void tst_users::SpoiledRows() {
  const int id = AddUser(u"marta"_s, Rights::Changes);
  m_database->Execute(u"UPDATE Claves SET Derechos=4 WHERE codUsuario={}", id);
  QCOMPARE(Read(id).rights, Rights::Viewer);
  m_database->Execute(u"UPDATE Claves SET Derechos=-7, Desde='ayer', UltimaEntrada=NULL, Hash=NULL WHERE codUsuario={}",
                      id);
  const Account spoiled = Read(id);
  QCOMPARE(spoiled.rights, Rights::Viewer);
  QVERIFY(!spoiled.MayEnter() && !spoiled.passwordSince.isValid() && !spoiled.lastEntry.isValid());
  m_database->Execute(u"UPDATE Usuarios SET Administrador=True, Nombre='{}' WHERE IDUsuario={}",
                      u"n"_s.repeated(10'000), id);
  QCOMPARE(Read(id).rights, Rights::Administrator);
  QCOMPARE(Read(id).name.size(), 50);
  m_database->Execute(u"DELETE FROM Claves");
  m_database->Execute(u"UPDATE Usuarios SET Administrador=False WHERE IDUsuario={}", id);
  QCOMPARE(Read(id).rights, Rights::ChangesAndDeletes);
  QVERIFY(!Read(id).MayEnter());
  m_database->Execute(u"UPDATE Usuarios SET Eliminado=True WHERE IDUsuario={}", id);
  QCOMPARE(Read(id).id, 0);
  for (const char* minutes : {"", "mucho", "-3", "99999"}) {
    host::SetOfficeSetting(m_database->Connection(), u"BloqueoMinutos"_s, QString::fromLatin1(minutes));
    const int read = host::IdleMinutes(m_database->Connection());
    QVERIFY2(read >= 0 && read <= host::mostIdleMinutes, minutes);
  }
}

void tst_users::PasswordsAreNoted() {
  Administrator administrator(*m_database, 1);
  const int id = administrator.Rules().Add({u"marta"_s, {}, Rights::Viewer});
  administrator.Rules().SetPassword(id, u"$secreto$"_s);
  QVERIFY(Read(id).mustChange && Read(id).passwordSince.isValid());
  Administrator(*m_database, id).Rules().ChangeOwnPassword(u"$suyo$"_s);
  QVERIFY(!Read(id).mustChange);
  administrator.Rules().TurnOn(u"Ana"_s, u"$suyo$"_s);
  QVERIFY(host::AsksForPasswords(m_database->Connection()) && Read(1).MayEnter());
  administrator.Rules().TurnOff();
  QVERIFY(!host::AsksForPasswords(m_database->Connection()));
  const QString notes = m_database->Query(u"SELECT Usuario, Nombre, Columnas FROM Cambios").join(u'/');
  QCOMPARE(notes.count(u"Contraseña"_s), 3);
  QVERIFY(!notes.contains(u'$') && notes.contains(u"a1|marta|[[\"Contraseña\",\"\",\"nueva\"]]"_s));
}

void tst_users::RightsThatAreLost_data() {
  QTest::addColumn<int>("rights");
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("said");
  const auto row = [](const char* name, Rights rights, const char* statement, const char* said) {
    QTest::newRow(name) << int(rights) << QString::fromUtf8(statement) << QString::fromUtf8(said);
  };
  row("nothing lost", Rights::Changes, "UPDATE Claves SET Derechos=3", "");
  row("viewer from the start", Rights::Viewer, "UPDATE Claves SET Derechos=1", "viewer");
  row("deleted", Rights::Changes, "UPDATE Usuarios SET Eliminado=True WHERE Nombre='marta'", "eliminado");
  row("switched off", Rights::Changes, "UPDATE Claves SET Desactivado=True", "desactivado");
  row("demoted", Rights::Administrator, "UPDATE Usuarios SET Administrador=False WHERE Nombre='marta'", "derechos");
  row("less than before", Rights::ChangesAndDeletes, "UPDATE Claves SET Derechos=2", "derechos");
}

// In the middle of the work, seen at the next write.
void tst_users::RightsThatAreLost() {
  QFETCH(const int, rights);
  QFETCH(const QString, statement);
  QFETCH(const QString, said);
  const int id = AddUser(u"marta"_s, static_cast<Rights>(rights));
  Administrator marta(*m_database, 1);
  QStringList told;
  host::RightsWatch watch(marta.session, Read(id));
  connect(&watch, &host::RightsWatch::Reduced, this, [&](const QString& text) { told.append(text); });
  QCOMPARE(marta.session.IsAdministrator(), static_cast<Rights>(rights) == Rights::Administrator);
  const auto save = [&](const char* name) {
    return Refusal([&] {
      adodb::Execute(*marta.session.connection, u"UPDATE Paises SET Nombre='{}' WHERE IDPais=35",
                     QString::fromLatin1(name));
    });
  };
  QCOMPARE(save("Hispania").isEmpty(), said != u"viewer");
  m_database->Connect()->Execute(statement);
  const bool isLost = !said.isEmpty();
  QCOMPARE(!save("Iberia").isEmpty(), isLost);
  QCOMPARE(!save("Sefarad").isEmpty(), isLost);
  QCOMPARE(told.size(), isLost && said != u"viewer" ? 1 : 0);
  QVERIFY(told.join(u' ').contains(said) || said == u"viewer");
  QVERIFY(marta.session.readOnly == isLost && marta.session.isViewer == isLost);
  if (isLost) {
    QVERIFY(!marta.session.IsAdministrator() && !marta.session.mayDelete);
    QCOMPARE(m_database->Query(u"SELECT Nombre FROM Paises WHERE IDPais=35").join(u'/'),
             said == u"viewer" ? u"España"_s : u"Hispania"_s);
  }
}

void tst_users::Waits() {
  constexpr int expected[] = {0, 0, 0, 2, 4, 8, 16, 32, 60, 60};
  for (int failures = 0; failures < 10; ++failures) {
    QCOMPARE(host::WaitAfter(failures).count(), expected[failures]);
  }
  QCOMPARE(host::WaitAfter(-5).count() + host::WaitAfter(1'000'000).count(), 60);
}

void tst_users::TwoProgramsGuess() {
  const int id = AddUser(u"marta"_s, Rights::Changes);
  Administrator(*m_database, 1).Rules().SetPassword(id, u"$hash$"_s);
  QDateTime now = QDateTime::currentDateTimeUtc();
  Door one([&] { return now; });
  Door two([&] { return now; });
  adodb::Connection& connection = m_database->Connection();
  Guess(one, 2);
  const Door::Try third = two.Begin(connection, u"MARTA"_s);
  QCOMPARE(third.hash, u"$hash$"_s);
  QCOMPARE(third.wait.count(), 0);
  // Not even the right one gets in meanwhile, in any program, at any start.
  QCOMPARE(one.Begin(connection, u"marta"_s).wait.count(), 2);
  QCOMPARE(Door([&] { return now; }).Wait(connection, u"marta"_s).count(), 2);
  now = now.addSecs(2);
  const Door::Try fourth = one.Begin(connection, u"marta"_s);
  QCOMPARE(fourth.wait.count(), 0);
  QCOMPARE(two.Wait(connection, u"marta"_s).count(), 4);
  one.Succeed(connection, fourth);
  QCOMPARE(two.Wait(connection, u"marta"_s).count(), 0);
  QCOMPARE(Read(id).lastEntry, QDateTime::fromString(now.toString(Qt::ISODate), Qt::ISODate));
  // Failures from before do not count any more.
  QCOMPARE(two.Begin(connection, u"marta"_s).wait.count(), 0);
  QCOMPARE(two.Wait(connection, u"marta"_s).count(), 0);
  // Whoever is not there waits in the same way.
  for (const char* name : {"nadie", "administrador"}) {
    for (int i = 0; i < 3; ++i) {
      QCOMPARE(one.Begin(connection, QString::fromLatin1(name)).wait.count(), 0);
    }
    QCOMPARE(one.Begin(connection, QString::fromLatin1(name)).wait.count(), 2);
    QCOMPARE(one.Wait(connection, QString::fromLatin1(name)).count(), 2);
  }
}

void tst_users::AClockThatIsSet() {
  const int id = AddUser(u"marta"_s, Rights::Changes);
  Administrator(*m_database, 1).Rules().SetPassword(id, u"$hash$"_s);
  QDateTime now = QDateTime::currentDateTimeUtc();
  Door door([&] { return now; });
  for (int i = 0; i < 5; ++i) {
    Guess(door, 1);
    now = now.addSecs(door.Wait(m_database->Connection(), u"marta"_s).count());
  }
  Guess(door, 1);
  QCOMPARE(door.Wait(m_database->Connection(), u"marta"_s).count(), 16);
  now = now.addDays(-1);
  QCOMPARE(door.Begin(m_database->Connection(), u"marta"_s).wait.count(), 16);
  now = now.addSecs(15);
  QCOMPARE(door.Begin(m_database->Connection(), u"marta"_s).wait.count(), 1);
  now = now.addSecs(1);
  QCOMPARE(door.Begin(m_database->Connection(), u"marta"_s).wait.count(), 0);
  m_database->Execute(u"UPDATE Claves SET Fallos=-9, EsperaHasta='nunca' WHERE codUsuario={}", id);
  QCOMPARE(door.Begin(m_database->Connection(), u"marta"_s).wait.count(), 0);
}

void tst_users::WhatCantBeWritten() {
  const int id = AddUser(u"marta"_s, Rights::Changes);
  Administrator(*m_database, 1).Rules().SetPassword(id, u"$hash$"_s);
  const auto viewing = database::CreateConnection(database::ForViewing(m_database->ConnectionString()));
  viewing->Open();
  QDateTime now = QDateTime::currentDateTimeUtc();
  Door door([&] { return now; });
  for (int i = 0; i < 3; ++i) {
    QCOMPARE(door.Begin(*viewing, u"marta"_s).wait.count(), 0);
  }
  QCOMPARE(door.Begin(*viewing, u"marta"_s).wait.count(), 2);
  now = now.addSecs(2);
  const Door::Try right = door.Begin(*viewing, u"marta"_s);
  QCOMPARE(right.hash, u"$hash$"_s);
  door.Succeed(*viewing, right);
  QCOMPARE(door.Wait(*viewing, u"marta"_s).count(), 0);
}

KEL_TEST(tst_users);

#include "tst_users.moc"
