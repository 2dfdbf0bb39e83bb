#include "host/access/Passwords.h"
#include "support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;

using host::PasswordVerdict;

/// Which passwords can be chosen, what is kept of them, and what is made of a hash that somebody spoiled.
class tst_passwords : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Choices_data();
  void Choices();
  void TheSameInOtherForms();
  void SpoiledHashes_data();
  void SpoiledHashes();
};

void tst_passwords::Choices_data() {
  QTest::addColumn<QString>("password");
  QTest::addColumn<QString>("fault");
  const auto row = [](const char* name, const QString& password, const char* fault) {
    QTest::newRow(name) << password << QString::fromUtf8(fault);
  };
  row("empty", {}, "al menos 8");
  row("seven", u"Ñandú 7"_s, "al menos 8");
  row("seven characters of two units", u"🐧🐪🐁🐂🐃🐄🐅"_s, "al menos 8");
  row("eight emoji", u"🐧🐪🐁🐂🐃🐄🐅🐆"_s, "");
  row("seven in more code points", u"cancio\u0301"_s, "al menos 8");
  row("a sentence", u"tres tigres tristes"_s, "");
  row("longest", u"abz9"_s.repeated(50), "");
  row("too long", u"abz9"_s.repeated(2500), "hasta 200");
  row("NUL", u"tres tigres"_s + QChar(0), "no se pueden escribir");
  row("line break", u"tres\ntigres"_s, "no se pueden escribir");
  row("one key", u"aaaaaaaaaaaa"_s, "tecla");
  row("two keys", u"aaaabbbb"_s, "tecla");
  row("a row", u"QWERTYUIOP"_s, "tecla");
  row("backwards", u"87654321"_s, "tecla");
  row("rows in pieces", u"asdf1234"_s, "tecla");
  row("with ñ", u"hjklñ567"_s, "tecla");
  row("hardly a row", u"qwexplotar"_s, "");
  row("the user", u"Inés Sanz 1998"_s, "nombre");
  row("the office", u"fundacion PUENTE de luz!"_s, "nombre");
  row("more than the office", u"un puente de luz"_s, "");
}

void tst_passwords::Choices() {
  QFETCH(const QString, password);
  QFETCH(const QString, fault);
  const QString found = host::PasswordFault(password, {u"Inés Sanz"_s, u"Fundación Puente de Luz"_s, u"2026"_s});
  QVERIFY2(fault.isEmpty() ? found.isEmpty() : found.contains(fault), qPrintable(found));
}

void tst_passwords::TheSameInOtherForms() {
  const QString hash = host::HashOf(u"camión 42 a\u00A0b"_s);
  QVERIFY2(hash.startsWith(u"$argon2id$v=19$m=65536,t=3,p=1$"_s), qPrintable(hash));
  QVERIFY(!host::IsOutdated(hash));
  QVERIFY(hash != host::HashOf(u"camión 42 a b"_s));
  QCOMPARE(host::CheckPassword(u"camio\u0301n 42 a b"_s, hash), PasswordVerdict::Right);
  QCOMPARE(host::CheckPassword(u"camion 42 a b"_s, hash), PasswordVerdict::Wrong);
  QCOMPARE(host::CheckPassword({}, hash), PasswordVerdict::Wrong);
  // What is cut is not what was meant.
  const QString longest = u"abz9"_s.repeated(50);
  QCOMPARE(host::CheckPassword(longest + u"abz9"_s.repeated(2500), host::HashOf(longest)), PasswordVerdict::Wrong);
  QCOMPARE(host::CheckPassword(u"uno"_s + QChar(0) + u"dos!"_s, host::HashOf(u"uno"_s)), PasswordVerdict::Wrong);
}

void tst_passwords::SpoiledHashes_data() {
  QTest::addColumn<QString>("hash");
  QTest::addColumn<bool>("isComputed");
  const QString rest = u"$AAAAAAAAAAAAAAAAAAAAAA$AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"_s;
  const auto row = [](const char* name, const QString& hash, bool isComputed = false) {
    QTest::newRow(name) << hash << isComputed;
  };
  row("another one's", u"$argon2id$v=19$m=65536,t=3,p=1"_s + rest, true);
  row("less than today", u"$argon2id$v=19$m=19456,t=2,p=1"_s + rest, true);
  row("none", {});
  row("a plain text", u"tres tigres"_s);
  row("4 GB", u"$argon2id$v=19$m=4194304,t=3,p=1"_s + rest);
  row("beyond numbers", u"$argon2id$v=19$m=99999999999999999999,t=3,p=1"_s + rest);
  row("a million passes", u"$argon2id$v=19$m=65536,t=999,p=1"_s + rest);
  row("many lanes", u"$argon2id$v=19$m=65536,t=3,p=4"_s + rest);
  row("another algorithm", u"$argon2i$v=19$m=65536,t=3,p=1"_s + rest);
  row("another library", u"$2b$12$KIXQ4W1c2V0d9uU1n3oOqO6hJ4m0m2yqv3b1"_s);
  row("cut", u"$argon2id$v=19$m=65536,t=3,p=1$AAAAAAAAAAAAAAAAAAAAAA$AAAA"_s);
  row("with a tail", u"$argon2id$v=19$m=65536,t=3,p=1"_s + rest + u'\n');
  row("huge", u"$argon2id$v=19$m=65536,t=3,p=1$"_s + u"A"_s.repeated(1'000'000));
}

void tst_passwords::SpoiledHashes() {
  QFETCH(const QString, hash);
  QFETCH(const bool, isComputed);
  QCOMPARE(host::CheckPassword(u"tres tigres"_s, hash),
           isComputed ? PasswordVerdict::Wrong : PasswordVerdict::Unusable);
  QCOMPARE(isComputed && !hash.contains(u"m=65536"_s), isComputed && host::IsOutdated(hash));
}

KEL_TEST(tst_passwords);

#include "tst_passwords.moc"
