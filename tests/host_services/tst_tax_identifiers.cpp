#include "host/services/TaxIdentifier.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

using host::CheckTaxIdentifier;
using host::TaxIdentifier;
using host::TaxIdentifierVerdict;

class tst_tax_identifiers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void PublishedVectors_data();
  void PublishedVectors();
  void Verdicts_data();
  void Verdicts();
  void EveryCheckLetterOfADniIsDifferent();
};

void tst_tax_identifiers::PublishedVectors_data() {
  QTest::addColumn<QString>("raw");
  QTest::addColumn<QString>("normalised");
  QTest::addColumn<QString>("kind");
  QTest::addColumn<QString>("control");
  QTest::addColumn<bool>("valid");
  QFile file(qEnvironmentVariable("KEL_DATOS") + u"/nif_vectors.tsv"_s);
  QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
  const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
  for (qsizetype i = 1; i < lines.size(); ++i) {
    const QStringList fields = lines[i].split(u'\t');
    QTest::addRow("%lld %s", static_cast<long long>(i), qPrintable(fields[0]))
        << fields[0] << fields[1] << fields[2] << fields[3] << (fields[5] == u"valid");
  }
  QVERIFY(lines.size() > 100);
}

void tst_tax_identifiers::PublishedVectors() {
  QFETCH(QString, raw);
  QFETCH(QString, normalised);
  QFETCH(QString, kind);
  QFETCH(QString, control);
  QFETCH(bool, valid);
  const TaxIdentifier found = CheckTaxIdentifier(raw);
  QCOMPARE(found.verdict == TaxIdentifierVerdict::Valid, valid);
  QCOMPARE(found.normalised, normalised);
  if (kind == u"-") {
    QVERIFY(found.verdict == TaxIdentifierVerdict::UnknownFormat ||
            found.verdict == TaxIdentifierVerdict::InvalidFirstLetter);
    return;
  }
  QVERIFY(valid || found.verdict == TaxIdentifierVerdict::WrongCheckCharacter);
  QCOMPARE(KindName(found.kind), kind == u"NIE" || kind == u"CIF" ? kind : u"NIF"_s);
  QVERIFY2(control.split(u'/').contains(found.control), qPrintable(found.control));
}

void tst_tax_identifiers::Verdicts_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<int>("verdict");
  QTest::addColumn<QString>("kind");
  QTest::addColumn<QString>("control");
  const auto row = [](const char* name, const QString& text, int verdict, const char* kind, const char* control) {
    QTest::newRow(name) << text << verdict << QString::fromLatin1(kind) << QString::fromLatin1(control);
  };
  row("empty", QString(), 2, "NIF", "");
  row("only marks", u" .- "_s, 2, "NIF", "");
  row("dni without its letter", u"54362315"_s, 2, "NIF", "");
  row("points and dash", u"54.362.315-k"_s, 1, "NIF", "K");
  row("dash of a word processor", u"54362315\u2013K"_s, 1, "NIF", "K");
  row("no-break space", u"54362315\u00a0K"_s, 1, "NIF", "K");
  row("leading zeros left out", u"1234567L"_s, 1, "NIF", "L");
  row("seven digits and a wrong letter", u"1234567A"_s, 3, "NIF", "L");
  row("digits that are not ASCII", u"\u0661\u0662345678Z"_s, 2, "NIF", "");
  row("first letter that no entity has", u"I38790911"_s, 4, "CIF", "");
  row("letters only", u"COOPERATIVA"_s, 2, "CIF", "");
  row("letter class, digit typed wrong", u"Q28260001"_s, 3, "CIF", "H");
  row("digit class, letter typed wrong", u"A1234567L"_s, 3, "CIF", "4");
  row("free class, wrong letter", u"J9921658A"_s, 3, "CIF", "B");
  row("free class, wrong digit", u"J99216583"_s, 3, "CIF", "2");
  row("province 00", u"A00110121"_s, 3, "CIF", "B");
  row("very long", QString(100000, u'1'), 2, "NIF", "");
}

void tst_tax_identifiers::Verdicts() {
  QFETCH(QString, text);
  QFETCH(int, verdict);
  QFETCH(QString, kind);
  QFETCH(QString, control);
  const TaxIdentifier found = CheckTaxIdentifier(text);
  QCOMPARE(int(found.verdict), verdict);
  QCOMPARE(KindName(found.kind), kind);
  QCOMPARE(found.control, control);
}

void tst_tax_identifiers::EveryCheckLetterOfADniIsDifferent() {
  QSet<QString> letters;
  for (int number = 0; number < 23; ++number) {
    const QString digits = QString::number(number).rightJustified(8, u'0');
    letters.insert(CheckTaxIdentifier(digits + u'0').control);
  }
  QCOMPARE(letters.size(), 23);
}

KEL_TEST(tst_tax_identifiers);
#include "tst_tax_identifiers.moc"
