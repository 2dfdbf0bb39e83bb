#include "database/sqlite/SpanishCollation.h"
#include "support/TestProgram.h"

#include <QCollator>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

/// The order of texts: the short cut for plain letters gives what the full rules give.
class tst_collation : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AgreesWithTheFullRules();
  void Pairs_data();
  void Pairs();
};

namespace {

int Compare(const QString& first, const QString& second) {
  const QByteArray left = first.toUtf8();
  const QByteArray right = second.toUtf8();
  const int order = database::SpanishCollation::Instance().Compare({left.constData(), std::size_t(left.size())},
                                                                   {right.constData(), std::size_t(right.size())});
  return (order > 0) - (order < 0);
}

}  // namespace

void tst_collation::AgreesWithTheFullRules() {
  QCollator collator(QLocale(QLocale::Spanish, QLocale::Spain));
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  const QString characters = u"aAbnNoOzZñÑáÁüé0123 -_.,'\"ºªçßæ\u0303\u0301€"_s;
  constexpr qsizetype plainLetters = 8;
  std::mt19937 random(1);
  const auto text = [&] {
    QString made;
    for (auto length = random() % 6; length > 0; --length) {
      // Mostly plain letters, so that the short cut is taken as far as it goes.
      const qsizetype choices = random() % 4 == 0 ? characters.size() : plainLetters;
      made += characters[static_cast<qsizetype>(random() % static_cast<unsigned>(choices))];
    }
    return made;
  };
  for (int i = 0; i < 200000; ++i) {
    const QString first = text();
    const QString second = text();
    const auto bare = [](QString value) {
      while (value.endsWith(u' ')) {
        value.chop(1);
      }
      return value;
    };
    const int order = collator.compare(bare(first), bare(second));
    QVERIFY2(Compare(first, second) == (order > 0) - (order < 0), qPrintable(first + u'|' + second));
  }
}

void tst_collation::Pairs_data() {
  QTest::addColumn<QString>("first");
  QTest::addColumn<QString>("second");
  QTest::addColumn<int>("order");
  const auto row = [](const char* first, const char* second, int order) {
    QTest::addRow("%s | %s", first, second) << QString::fromUtf8(first) << QString::fromUtf8(second) << order;
  };
  row("madrid", "MADRID  ", 0);
  row("peña", "PEÑA", 0);
  row("peña", "pena", 1);
  row("nz", "ña", -1);
  row("ñu", "oa", -1);
  row("cama", "camá", -1);
  row("camá", "camas", -1);
  row("", "   ", 0);
  row("a", "a b", -1);
  row("10", "9", -1);
  row("lluvia", "luz", -1);
}

void tst_collation::Pairs() {
  QFETCH(const QString, first);
  QFETCH(const QString, second);
  QTEST(Compare(first, second), "order");
  QCOMPARE(Compare(second, first), -Compare(first, second));
}

KEL_TEST(tst_collation);
#include "tst_collation.moc"
