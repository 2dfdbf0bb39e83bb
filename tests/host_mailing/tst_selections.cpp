#include "host/mailing/selection/PeopleList.h"
#include "host/mailing/selection/SelectionStore.h"
#include "platform/automation/Error.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using adodb::Verbatim;

namespace {

/// Keys in ascending order.
QString Keys(const std::vector<documents::Person>& people) {
  QStringList keys;
  for (const documents::Person& person : people) {
    keys.append(QString::number(person.id));
  }
  return keys.join(u' ');
}

}  // namespace

/// Who a selection means.
class tst_selections : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Chosen_data();
  void Chosen();
  void ByHand();
  void Refused_data();
  void Refused();
  void TakenByName();
  void Kept();
  void SeveralUsers();
  void Listed();

 private:
  QString Choose(const QString& conditions) {
    m_database.Execute(u"UPDATE Selecciones SET Condiciones='{}' WHERE IDSeleccion=2", conditions);
    const host::SavedSelection selection =
        host::ReadSelection(m_database.Connection(), u"suscriptores del boletín"_s, 2);
    // What is understood is written so again.
    if (host::TextOf(selection.conditions) != conditions) {
      return u"written as "_s + host::TextOf(selection.conditions);
    }
    return Keys(host::ReadPeople(m_database.Connection(), selection, host::PeopleOrder::Number));
  }

  support::TestDatabase m_database{database::Content::Demonstration};
};

void tst_selections::Chosen_data() {
  QTest::addColumn<QString>("conditions");
  QTest::addColumn<QString>("where");
  const QString donor = u"IDColaborador IN (SELECT CodColaborador FROM Donativos WHERE Eliminado=0 AND %1)"_s;
  const QString subscriber = u"IDColaborador IN (SELECT CodColaborador FROM Suscripciones WHERE Eliminado=0 AND %1)"_s;
  QTest::newRow("everybody") << u""_s << u"1=1"_s;
  QTest::newRow("publications") << u"Publicacion=1,3"_s << subscriber.arg(u"CodTipoPublicacion IN (1,3)"_s);
  QTest::newRow("donations") << u"TipoDonativo=2\nDonativosDesde=2019-05-01\nDonativosHasta=2020-12-31"_s
                             << donor.arg(u"CodTipoDonativo=2 AND Fecha BETWEEN '2019-05-01' AND '2020-12-31'"_s);
  QTest::newRow("dates alone") << u"DonativosHasta=2015-12-31"_s << donor.arg(u"Fecha<'2016'"_s);
  const QString day = m_database.Query(u"SELECT TOP 1 Fecha FROM Donativos ORDER BY IDDonativo").constFirst();
  QTest::newRow("one day") << u"DonativosDesde=%1\nDonativosHasta=%1"_s.arg(day) << donor.arg(u"Fecha='%1'"_s.arg(day));
  QTest::newRow("issuer of both") << u"Emisor=2"_s << subscriber.arg(u"CodEmisor_Cuenta=2"_s);
  QTest::newRow("community") << u"Comunidad=13"_s << u"CodProvincia=28"_s;
  QTest::newRow("several of several") << u"Provincia=28,40\nPais=35\nCobrador=1,2\nEncabezado=1"_s
                                      << u"CodProvincia IN (28,40) AND codpais=35 AND CodCobrador IN (1,2) AND "
                                         "CodEncabezado=1"_s;
}

void tst_selections::Chosen() {
  QFETCH(QString, conditions);
  QFETCH(QString, where);
  const QString expected =
      m_database
          .Query(u"SELECT IDColaborador FROM Colaboradores WHERE Eliminado=0 AND {} ORDER BY IDColaborador",
                 Verbatim{where})
          .join(u' ');
  QVERIFY(!expected.isEmpty());
  QCOMPARE(Choose(conditions), expected);
}

void tst_selections::ByHand() {
  m_database.Execute(u"INSERT INTO SeleccionesPersonas (codSeleccion, codColaborador, Incluida) VALUES (2, 5, -1)");
  m_database.Execute(u"INSERT INTO SeleccionesPersonas (codSeleccion, codColaborador, Incluida) VALUES (2, 9, 0)");
  QCOMPARE(Choose({}), u"5"_s);
  m_database.Execute(u"UPDATE Colaboradores SET CodCobrador=3 WHERE IDColaborador=9");
  const QString chosen = u' ' + Choose(u"Cobrador=3"_s) + u' ';
  QVERIFY2(chosen.contains(u" 5 "_s) && !chosen.contains(u" 9 "_s) && chosen.count(u' ') > 10, qPrintable(chosen));
  m_database.Execute(u"DELETE FROM SeleccionesPersonas WHERE codSeleccion=2");
}

void tst_selections::Refused_data() {
  QTest::addColumn<QString>("conditions");
  QTest::addColumn<QString>("word");
  QTest::newRow("unknown") << u"Signo=1"_s << u"Signo=1"_s;
  QTest::newRow("no number") << u"Pais=1,x"_s << u"Pais=1,x"_s;
  QTest::newRow("more than a number") << u"Pais=1) OR (1=1"_s << u"OR"_s;
  QTest::newRow("no date") << u"DonativosDesde=2020-02-30"_s << u"2020-02-30"_s;
  QTest::newRow("gone") << u"Publicacion=77"_s << u"publicación número 77"_s;
}

void tst_selections::Refused() {
  QFETCH(QString, conditions);
  QFETCH(QString, word);
  try {
    QFAIL(qPrintable(Choose(conditions)));
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(word), qPrintable(error.Description()));
  }
}

/// One's own before a shared one; nobody else's.
void tst_selections::TakenByName() {
  m_database.Execute(
      u"INSERT INTO Selecciones (Nombre, Condiciones, codUsuario) VALUES ('TODAS LAS PERSONAS', 'Cobrador=1', 2)");
  const auto conditions = [&](int user) {
    return host::TextOf(host::ReadSelection(m_database.Connection(), u"Todas las personas"_s, user).conditions);
  };
  QCOMPARE(conditions(2), u"Cobrador=1"_s);
  QCOMPARE(conditions(1), QString());
  m_database.Execute(u"UPDATE Selecciones SET Compartida=0 WHERE IDSeleccion=1");
  QVERIFY_THROWS_EXCEPTION(automation::Error, conditions(3));
}

/// What is saved is what is read, also for thousands of people; a change of somebody else's is never written over.
void tst_selections::Kept() {
  const host::SelectionUser luis{3, false};
  adodb::Connection& connection = m_database.Connection();
  host::SavedSelection selection;
  selection.name = u" O'Higgins "_s;
  selection.conditions.values[4] = {28, 40};
  for (int person = 1; person <= 2000; ++person) {
    selection.people.insert(person, person % 2 == 0);
  }
  const int id = host::SaveSelection(connection, selection, {}, luis);
  selection.id = id;
  selection.name = u"O'Higgins"_s;
  const host::SavedSelection before = host::ReadSelection(connection, id, 3);
  QCOMPARE(before, selection);
  QVERIFY(host::ReadPeople(connection, selection, host::PeopleOrder::Number).size() > 160);
  host::SavedSelection changed = before;
  changed.people = {{7, false}};
  QCOMPARE(host::SaveSelection(connection, changed, before, luis), id);
  QCOMPARE(host::ReadSelection(connection, id, 3), changed);
  QVERIFY_THROWS_EXCEPTION(automation::Error, host::SaveSelection(connection, selection, before, luis));
  QCOMPARE(host::ReadSelection(connection, id, 3), changed);
  host::SavedSelection nobody;
  nobody.name = u"Nadie"_s;
  nobody.onlyTaken = true;
  QVERIFY_THROWS_EXCEPTION(automation::Error, host::SaveSelection(connection, nobody, {}, luis));
  nobody.people = {{5, true}};
  const int picked = host::SaveSelection(connection, nobody, {}, luis);
  QCOMPARE(Keys(host::ReadPeople(connection, host::ReadSelection(connection, picked, 3), {})), u"5"_s);
}

/// Names are one in what a user sees; a shared selection is changed by its owner or an administrator.
void tst_selections::SeveralUsers() {
  const host::SelectionUser owner{11, false};
  const host::SelectionUser other{12, false};
  const host::SelectionUser administrator{13, true};
  adodb::Connection& connection = m_database.Connection();
  host::SavedSelection selection;
  selection.name = u"Amigos"_s;
  const int id = host::SaveSelection(connection, selection, {}, owner);
  const int others = host::SaveSelection(connection, selection, {}, other);
  const auto refused = [&](const auto& work) {
    try {
      work();
      return QString();
    } catch (const automation::Error& error) {
      return error.Description();
    }
  };
  const auto names = [&](int user) {
    QStringList list;
    for (const host::StoredSelection& stored : host::ListSelections(connection, user)) {
      list.append(stored.name);
    }
    return list.join(u',');
  };
  QVERIFY(refused([&] { host::SaveSelection(connection, selection, {}, owner); }).contains(u"Ya hay"_s));
  QVERIFY(refused([&] { host::ShareSelection(connection, id, true, owner); }).contains(u"Ya hay"_s));
  QVERIFY(refused([&] { host::RenameSelection(connection, id, u"x"_s, administrator); }).contains(u"otra persona"_s));
  host::RenameSelection(connection, id, u"Amistades"_s, owner);
  host::ShareSelection(connection, id, true, owner);
  QVERIFY(names(12).contains(u"Amigos,Amistades"_s));
  QVERIFY(refused([&] { host::RenameSelection(connection, others, u"amistades"_s, other); }).contains(u"Ya hay"_s));
  QVERIFY(refused([&] { host::DeleteSelection(connection, id, other); }).contains(u"otra persona"_s));
  host::RenameSelection(connection, id, u"De todos"_s, administrator);
  host::DeleteSelection(connection, id, administrator);
  QVERIFY(!names(11).contains(u"De todos"_s));
  QVERIFY(refused([&] { host::ReadSelection(connection, id, 11); }).contains(u"eliminado"_s));
  QVERIFY(refused([&] { host::RenameSelection(connection, others, QString(101, u'x'), other); }).contains(u"100"_s));
}

/// Who is left out by hand stays in sight; who shares an address, or has none, is told.
void tst_selections::Listed() {
  host::SavedSelection selection;
  selection.conditions = host::ConditionsIn(u"Provincia=28"_s);
  selection.people = {{1, true}, {321, true}, {301, false}};
  const auto people = host::ListPeople(m_database.Connection(), selection, host::PeopleOrder::Number);
  const auto find = [&](int id) {
    const auto found = std::ranges::find(people, id, &host::ListedPerson::id);
    return found == people.end() ? host::ListedPerson() : *found;
  };
  QCOMPARE(find(1).id, 1);
  QCOMPARE(find(321).missing, u"sin dirección"_s);
  QVERIFY(find(301).shares && find(302).shares && !find(1).shares);
  QVERIFY(people.size() < 100);
  selection.conditions = {};
  selection.onlyTaken = true;
  QCOMPARE(host::ListPeople(m_database.Connection(), selection, {}).size(), std::size_t(337));
}

KEL_TEST(tst_selections);
#include "tst_selections.moc"
