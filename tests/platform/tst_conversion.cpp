#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QTest>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

using namespace automation;

namespace {

// The result of a conversion as a text, or "error N".
QString Outcome(const std::function<QString()>& conversion) {
  try {
    return conversion();
  } catch (const Error& error) {
    return u"error %1"_s.arg(error.Number());
  }
}

}  // namespace

class tst_conversion : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void SpanishNumbers_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("number");
    const auto row = [](const char* text, const char* number) {
      QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(number);
    };
    row("6,5", "6.5");
    row("1.234,50", "1234.50");
    row("1.234.567", "1234567");
    row("  12,00 € ", "12.00");
    row("-0,25", "-0.25");
    row("+7", "7");
    row(",5", "0.5");
    row("6,", "6");
    row("1E3", "1e3");
    row("00007", "00007");
    for (const char* bad : {"", " ", "€", "6.5", "1.2.3", "12345.678", "1,2,3", "1.234.56", "abc", "12a", "-", ",", ".",
                            "1E", "1.234E2", "0x10", "٣", "1 2", "1,5-"}) {
      row(bad, "-");
    }
    QTest::newRow("too long") << QString(401, u'1') << u"-"_s;
  }
  void SpanishNumbers() {
    QFETCH(QString, text);
    QFETCH(QString, number);
    const auto found = SpanishNumber(text);
    QCOMPARE(found ? QString::fromLatin1(*found) : u"-"_s, number);
    QCOMPARE(IsNumeric(text), found.has_value());
  }

  void WholeNumbers_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("asInt16");
    QTest::addColumn<QString>("asInt32");
    const auto row = [](const char* name, const QVariant& value, const char* int16, const char* int32) {
      QTest::newRow(name) << value << QString::fromLatin1(int16) << QString::fromLatin1(int32);
    };
    row("half to even, down", 2.5, "2", "2");
    row("half to even, up", 3.5, "4", "4");
    row("negative half", -2.5, "-2", "-2");
    row("text half", u"5,5"_s, "6", "6");
    row("largest 16-bit", 32767.49, "32767", "32767");
    row("beyond 16 bits", 32767.5, "error 6", "32768");
    row("beyond 32 bits", 2147483647.5, "error 6", "error 6");
    row("smallest 32-bit", -2147483648.5, "error 6", "-2147483648");
    row("not a number", std::nan(""), "error 6", "error 6");
    row("true is -1", true, "-1", "-1");
    row("empty", QVariant(), "0", "0");
    row("Null", Null(), "error 94", "error 94");
    row("text", u"hola"_s, "error 13", "error 13");
    row("currency", QVariant::fromValue(Currency::FromScaled(125000)), "12", "12");
  }
  void WholeNumbers() {
    QFETCH(QVariant, value);
    QFETCH(QString, asInt16);
    QFETCH(QString, asInt32);
    QCOMPARE(Outcome([&] { return QString::number(CInt(value)); }), asInt16);
    QCOMPARE(Outcome([&] { return QString::number(CLng(value)); }), asInt32);
  }

  void Currencies_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("decimal") << QVariant(u"6,5"_s) << "6,5";
    QTest::newRow("whole with comma") << QVariant(u"6,"_s) << "6";
    QTest::newRow("four decimals") << QVariant(1.23456) << "1,2346";
    QTest::newRow("half to even, down") << QVariant(0.00005) << "0";
    QTest::newRow("half to even, up") << QVariant(0.00015) << "0,0002";
    QTest::newRow("above the half") << QVariant(0.0000500001) << "0,0001";
    QTest::newRow("negative") << QVariant(-12.5) << "-12,5";
    QTest::newRow("largest") << QVariant(922337203685477.0) << "922337203685477";
    QTest::newRow("too large") << QVariant(922337203685478.0) << "error 6";
    QTest::newRow("tiny") << QVariant(1e-30) << "0";
  }
  void Currencies() {
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(Outcome([&] { return CStr(QVariant::fromValue(CCur(value))); }), text);
  }

  void Formats_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    const auto row = [](const QVariant& value, const char* pattern, const char* text) {
      QTest::newRow(qPrintable(value.toString() + u' ' + QString::fromUtf8(pattern)))
          << value << QString::fromUtf8(pattern) << QString::fromUtf8(text);
    };
    row(12, "#,0.#0", "12,00");
    row(18.5, "#,0.#0", "18,50");
    row(1234567.891, "#,0.#0", "1.234.567,89");
    row(2.675, "#,0.#0", "2,68");
    row(999.995, "#,0.#0", "1.000,00");
    row(0, "#,0.#0", "0,00");
    row(-0.001, "#,0.#0", "0,00");
    row(-1234.5, "#,0.#0", "-1.234,50");
    row(0.5, "#.##", ",5");
    row(7, "000", "007");
    row(12.5, "#,0.00 €", "12,50 €");
    row(1e15, "#,0.00", "1.000.000.000.000.000,00");
    row(u"1.234,5"_s, "#,0.#0", "1.234,50");
  }
  void Formats() {
    QFETCH(QVariant, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(Format(value, pattern), text);
  }

  void TextsAndLeadingDigits() {
    QCOMPARE(CStr(6.5), u"6,5"_s);
    QCOMPARE(CStr(true), u"Verdadero"_s);
    QCOMPARE(CStr(0.1 + 0.2), u"0,3"_s);
    QCOMPARE(Text(Null()), QString());
    QVERIFY(IsNull(Null()) && !IsNull(QVariant()) && !IsNull(u""_s));
    QCOMPARE(Outcome([] { return CStr(Null()); }), u"error 94"_s);
    QCOMPARE(Val(u"12001"), 12001.0);
    QCOMPARE(Val(u" 1 2,5"), 12.0);
    QCOMPARE(Val(u"3.5.1 m"), 3.5);
    QCOMPARE(Val(u"-7x"), -7.0);
    QCOMPARE(Val(u"hola"), 0.0);
    QVERIFY(CBool(u"Verdadero"_s));
    QVERIFY(CBool(-1));
    QVERIFY(!CBool(u"0"_s));
    QCOMPARE(Outcome([] { return QString::number(CByte(256)); }), u"error 6"_s);
    QCOMPARE(Outcome([] { return QString::number(CByte(255)); }), u"255"_s);
  }
};

KEL_TEST(tst_conversion);
#include "tst_conversion.moc"
