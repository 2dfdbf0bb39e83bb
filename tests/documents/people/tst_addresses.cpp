#include "documents/people/Posting.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using documents::Person;
using documents::PostalAddress;
using documents::Posting;

namespace {

/// "Calle Mayor, 1|28013|Madrid|28|Francia"; at home without the last.
PostalAddress AddressOf(const QString& text) {
  const QStringList parts = text.split(u'|');
  return {.street = parts.value(0),
          .postcode = parts.value(1),
          .town = parts.value(2),
          .province = u"Provincia"_s,
          .provincePrefix = parts.value(3),
          .country = parts.value(4),
          .isAbroad = parts.size() > 4};
}

}  // namespace

/// What can be posted, and who lives together.
class tst_addresses : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void CanBePosted_data();
  void CanBePosted();
  void Printed();
  void LiveTogether_data();
  void LiveTogether();
};

void tst_addresses::CanBePosted_data() {
  QTest::addColumn<QString>("address");
  QTest::addColumn<Posting>("expected");
  QTest::newRow("at home") << u"Mayor, 1|28013|Madrid|28"_s << Posting::Good;
  QTest::newRow("no province") << u"Mayor, 1|28013|Madrid|"_s << Posting::Good;
  QTest::newRow("abroad without postcode") << u"Mayor, 1||Villanueva||Francia"_s << Posting::Good;
  QTest::newRow("abroad, its own postcode") << u"Rua do Alecrim, 14|1200-018|Lisboa|28|Portugal"_s << Posting::Good;
  QTest::newRow("another province's") << u"Plaza, s/n|26127|Aldea del Monte|42"_s << Posting::Doubtful;
  QTest::newRow("four digits") << u"Mayor, 1|2801|Madrid|28"_s << Posting::Doubtful;
  QTest::newRow("a letter in it") << u"Mayor, 1|28O13|Madrid|28"_s << Posting::Doubtful;
  QTest::newRow("no street") << u" \t|28013|Madrid|28"_s << Posting::Impossible;
  QTest::newRow("no town") << u"Mayor, 1|28013|  |28"_s << Posting::Impossible;
  QTest::newRow("no postcode") << u"Mayor, 1| |Madrid|28"_s << Posting::Impossible;
  QTest::newRow("no town abroad") << u"Mayor, 1|31000|||Francia"_s << Posting::Impossible;
}

void tst_addresses::CanBePosted() {
  QFETCH(QString, address);
  QTEST(documents::PostingOf(AddressOf(address)), "expected");
}

void tst_addresses::Printed() {
  const PostalAddress home = AddressOf(u"a|b|c|28"_s);
  const PostalAddress abroad = AddressOf(u"a|b|c|28|España y Perú"_s);
  QCOMPARE(documents::PrintedProvince(home), u"Provincia"_s);
  QCOMPARE(documents::PrintedCountry(home), QString());
  QCOMPARE(documents::PrintedProvince(abroad), QString());
  QCOMPARE(documents::PrintedCountry(abroad), u"ESPAÑA Y PERÚ"_s);
}

void tst_addresses::LiveTogether_data() {
  QTest::addColumn<QStringList>("addresses");
  QTest::addColumn<QString>("expected");
  const auto row = [](const char* name, const QStringList& addresses, const QString& expected) {
    QTest::newRow(name) << addresses << expected;
  };
  const QString home = u"Calle Mayor, 3, 3.º B|28013|Madrid|28"_s;
  row("spelt in other ways",
      {home, u"C/ MAYOR 3  3º B|28013|madrid|28"_s, u"c. mayor, n.º 3 - 3ºB|28 013|Madrid|08"_s,
       u"Cl Máyor 3 3 b|28013|Madrid|"_s},
      u"0 1 2 3"_s);
  row("another door", {home, u"Calle Mayor, 3, 3.º A|28013|Madrid|28"_s}, u"0/1"_s);
  row("another floor", {home, u"Calle Mayor, 3, 2.º B|28013|Madrid|28"_s}, u"0/1"_s);
  row("another postcode, town, country",
      {home, u"Calle Mayor, 3, 3.º B|28014|Madrid|28"_s, u"Calle Mayor, 3, 3.º B|28013|Móstoles|28"_s,
       home + u"|Chile"_s},
      u"0/1/2/3"_s);
  row("the order stays", {home, u"Avda. Sol, 1|1|A|"_s, u"Avenida Sol 1|1|a|"_s, home, u"Pº Sol, 1|1|A|"_s},
      u"0 3/1 2/4"_s);
  row("no address", {u"||"_s, u"||"_s, u"Mayor, 1||"_s, u"Mayor, 1||"_s, u"-|1|A|"_s, u"-|1|A|"_s}, u"0/1/2/3/4/5"_s);
}

void tst_addresses::LiveTogether() {
  QFETCH(QStringList, addresses);
  QList<Person> people;
  for (const QString& address : addresses) {
    Person person;
    person.address = AddressOf(address);
    people.append(person);
  }
  QStringList households;
  for (const QList<int>& household : documents::Households(people)) {
    QStringList members;
    for (const int member : household) {
      members.append(QString::number(member));
    }
    households.append(members.join(u' '));
  }
  QTEST(households.join(u'/'), "expected");
}

KEL_TEST(tst_addresses);
#include "tst_addresses.moc"
