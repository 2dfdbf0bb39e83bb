#include "documents/people/Names.h"
#include "documents/people/Salutation.h"
#include "documents/people/SpanishDates.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using documents::Person;

namespace {

/// "D.ª|Inés|Olmedo|Ruiz"
Person PersonOf(const QString& text) {
  const QStringList parts = text.split(u'|');
  Person person;
  person.title = parts.value(0);
  person.firstName = parts.value(1);
  person.surname = parts.value(2);
  person.secondSurname = parts.value(3);
  person.headingKind = parts.value(4);
  return person;
}

}  // namespace

/// How people are named and addressed.
class tst_names : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Names_data();
  void Names();
  void Together_data();
  void Together();
  void Salutations_data();
  void Salutations();
  void Dates();
};

void tst_names::Names_data() {
  QTest::addColumn<QString>("person");
  QTest::addColumn<QString>("titled");
  QTest::addColumn<QString>("lastNameFirst");
  QTest::newRow("whole") << u"D.ª|Ana|Pérez|Gil"_s << u"D.ª Ana Pérez Gil"_s << u"Pérez Gil, Ana"_s;
  QTest::newRow("one surname, blanks") << u" |Ana |  Pérez|"_s << u"Ana Pérez"_s << u"Pérez, Ana"_s;
  QTest::newRow("a parish") << u"|Parroquia de San Blas||"_s << u"Parroquia de San Blas"_s
                            << u"Parroquia de San Blas"_s;
  QTest::newRow("surname alone") << u"D.||Pérez|"_s << u"D. Pérez"_s << u"Pérez"_s;
  QTest::newRow("nobody") << u"|||"_s << QString() << QString();
}

void tst_names::Names() {
  QFETCH(QString, person);
  QTEST(documents::TitledName(PersonOf(person)), "titled");
  QTEST(documents::LastNameFirst(PersonOf(person)), "lastNameFirst");
}

void tst_names::Together_data() {
  QTest::addColumn<QString>("people");
  QTest::addColumn<QString>("expected");
  const QString ana = u"D.ª|Ana|Pérez|Gil"_s;
  QTest::newRow("one") << ana << u"D.ª Ana Pérez Gil"_s;
  QTest::newRow("two") << u"D.|Lorenzo|Bermúdez|Gil;D.ª|Inés|Olmedo|Ruiz"_s
                       << u"D. Lorenzo Bermúdez Gil y D.ª Inés Olmedo Ruiz"_s;
  QTest::newRow("equal surnames") << u"D.|Lorenzo|Bermúdez|Olmedo;D.ª|Inés|BERMÚDEZ|Olmedo"_s
                                  << u"D. Lorenzo y D.ª Inés BERMÚDEZ Olmedo"_s;
  QTest::newRow("without surnames") << u"|Luis||;|Inés||"_s << u"Luis e Inés"_s;
  QTest::newRow("a sound of i behind an h") << u"|Luis||;|Hilario||"_s << u"Luis e Hilario"_s;
  QTest::newRow("no sound of i") << u"|Luis||;|Hiedra||"_s << u"Luis y Hiedra"_s;
  QTest::newRow("three") << ana + u";D.|Blas|Pérez|Gil;D.|César|Pérez|Gil"_s
                         << u"D.ª Ana Pérez Gil, D. Blas Pérez Gil/y D. César Pérez Gil"_s;
  QTest::newRow("four") << ana + u";|B|C|;|D|E|;|F|G|"_s << u"D.ª Ana Pérez Gil, B C,/D E y F G"_s;
  QTest::newRow("five") << ana + u";|B||;|C||;|D||;|E||"_s << u"D.ª Ana Pérez Gil y familia"_s;
}

void tst_names::Together() {
  QFETCH(QString, people);
  QList<Person> all;
  for (const QString& person : people.split(u';')) {
    all.append(PersonOf(person));
  }
  QTEST(documents::JointName(all).join(u'/'), "expected");
}

void tst_names::Salutations_data() {
  QTest::addColumn<QString>("person");
  QTest::addColumn<QString>("heading");
  QTest::addColumn<QString>("expected");
  const QString both = u"Estimado/a amigo/a:"_s;
  const auto row = [](const QString& title, const QString& kind, const QString& heading, const QString& expected) {
    QTest::addRow("%s %s %s", qPrintable(title), qPrintable(kind), qPrintable(heading))
        << title + u"||||"_s + kind << heading << expected;
  };
  for (const QString& title : {u"D."_s, u"Sr. D."_s, u"Rvdo. P."_s, u"Fray"_s, u"EXCMO."_s}) {
    row(title, u"Particular"_s, both, u"Estimado amigo:"_s);
  }
  for (const QString& title : {u"D.ª"_s, u"Dña."_s, u"Doña"_s, u"Sra. D.ª"_s, u"Sor"_s, u"M."_s, u"Hna."_s}) {
    row(title, u"Particular"_s, both, u"Estimada amiga:"_s);
  }
  for (const QString& title : {u"Sres."_s, u"D. y D.ª"_s, u"Familia"_s}) {
    row(title, u"Particular"_s, both, u"Estimados amigos:"_s);
  }
  row(u""_s, u"Religiosa"_s, both, u"Estimada amiga:"_s);
  row(u""_s, u"Matrimonio"_s, both, u"Estimados amigos:"_s);
  for (const QString& title : {u""_s, u"Alcalde"_s, u"D./D.ª"_s}) {
    row(title, u"Particular"_s, both, both);
  }
  row(u"D.ª"_s, u""_s, u"Querido/da señor/a y doctor/ra:"_s, u"Querida señora y doctora:"_s);
  row(u"D.ª"_s, u""_s, u"ESTIMADOS/AS SEÑORES/AS, Sr./Sra."_s, u"ESTIMADAS SEÑORAS, Sra."_s);
  row(u"Sres."_s, u""_s, u"SEÑOR/A, amigos/as, Sr./Sra."_s, u"SEÑORES, amigos, Sr./Sra."_s);
  row(u"D."_s, u""_s, u"Señor/Señora, y/o, s/n, /a, a/"_s, u"Señor, y/o, s/n, /a, a/"_s);
  row(u"D.ª"_s, u""_s, u"Reverenda hermana:"_s, u"Reverenda hermana:"_s);
}

void tst_names::Salutations() {
  QFETCH(QString, person);
  QFETCH(QString, heading);
  QTEST(documents::Salutation(heading, documents::GenderOf(PersonOf(person))), "expected");
}

void tst_names::Dates() {
  const QDate date(2026, 11, 21);
  QCOMPARE(documents::LongDate(date), u"sábado, 21 de noviembre de 2026"_s);
  QCOMPARE(documents::LongDate(QDate(2026, 3, 2)), u"lunes, 2 de marzo de 2026"_s);
  QCOMPARE(documents::DateAndTime(QDateTime(date, QTime(9, 5))), u"21/11/2026 09:05"_s);
  for (const QString& text : {u"2026-11-21"_s, u" 21/11/2026 "_s}) {
    QCOMPARE(documents::DateIn(text), date);
  }
  for (const QString& text : {u"2026-02-30"_s, u"noviembre"_s, QString()}) {
    QVERIFY2(!documents::DateIn(text).isValid(), qPrintable(text));
  }
}

KEL_TEST(tst_names);
#include "tst_names.moc"
