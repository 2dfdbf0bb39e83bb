#include "host/mailing/selection/Addressees.h"
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

KEL_TEST(tst_selections);
#include "tst_selections.moc"
