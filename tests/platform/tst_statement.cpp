#include "platform/adodb/Statement.h"

#include "support/TestProgram.h"

#include <QTest>

using adodb::StatementText;
using adodb::Verbatim;
using namespace Qt::StringLiterals;

// What a form refuses, it refuses when it is compiled; these are the values' ways into one that it takes.
class tst_statement : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ValuesGoToTheirPlaces() {
    QCOMPARE(StatementText(u"UPDATE T SET A='{}',B={},C={} WHERE D={}", u"x"_s, true, false, qint64(-5)),
             u"UPDATE T SET A='x',B=-1,C=0 WHERE D=-5"_s);
    QCOMPARE(StatementText(u"SELECT A FROM T WHERE B={0} OR C={0} OR D='{1}'", 7, u"y"),
             u"SELECT A FROM T WHERE B=7 OR C=7 OR D='y'"_s);
    QCOMPARE(StatementText(u"SELECT A FROM T"), u"SELECT A FROM T"_s);
  }

  void ApostrophesAreDoubledInTextsOnly() {
    const QString name = u"Côte d'Ivoire {} {0} \"x\" %1"_s;
    QCOMPARE(
        StatementText(u"VALUES('{}',\"{}\",{})", name, name, Verbatim{name}),
        u"VALUES('Côte d''Ivoire {} {0} \"x\" %1',\"Côte d''Ivoire {} {0} \"x\" %1\",Côte d'Ivoire {} {0} \"x\" %1)"_s);
  }
};

KEL_TEST(tst_statement);
#include "tst_statement.moc"
