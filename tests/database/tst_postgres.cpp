#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <latch>
#include <thread>

using adodb::Verbatim;
using support::ErrorOf;
using support::Outcome;
using support::Rows;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// What only a server does: several writers, its refusals in Spanish, and that texts mean on both engines the same.
class tst_postgres : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void TextsMeanTheSameOnBothEngines();
  void AmountsAreExact();
  void RefusalsNameWhatIsConcerned_data();
  void RefusalsNameWhatIsConcerned();
  void AnOpenRowIsWaitedFor();
  void ADeadlockLosesTheTransaction();
  void ACutLineLosesTheTransaction();
  void KeysGoOnBehindGivenOnes();
  void RowsComeInTheOrderOfTheirKeys();
  void LongTextsFit();
  void TwoProgramsPrepareOneDatabase();
  void ForeignAndNewerDatabasesAreRefused();
  void ConnectingFailsClearly_data();
  void ConnectingFailsClearly();

 private:
  const support::ServerDatabase& Server() const { return *m_database->Server(); }

  std::unique_ptr<TestDatabase> m_database;
};

namespace {

QString MessageOf(adodb::Connection& connection, const QString& statement) {
  try {
    connection.Execute(statement);
  } catch (const automation::Error& error) {
    return u"%1 %2"_s.arg(error.Number()).arg(error.Description());
  }
  return {};
}

// Names of countries and provinces, and texts whose comparison is a matter of rules.
QStringList Words(adodb::Connection& connection) {
  QStringList words = Rows(connection, u"SELECT TOP 120 Nombre FROM Paises ORDER BY IDPais"_s) +
                      Rows(connection, u"SELECT Nombre FROM Provincias ORDER BY IDProvincia"_s);
  words +=
      QString::fromUtf8(
          "ana|Ana|ANA|Ana  | "
          "ana|áná|aná|ñu|nu|Ñu|nz|n|ñ|N|Ñ|o|ch|cz|da|Ch|ll|lz|ma|ç|c|Ç|cedilla|ß|ss|SS|æ|ae|AE|œ|oe|"
          "ü|u|ú|Ú|u\u0308|n\u0303u|a\u0301na|e\u0301|é|É|1|01|10|2|a-b|ab|a b|a.b|a'b|a,b|a_b|a%b|a\\b|*|?|😀|😁|ﬁn|fin|"
          "ª|º|½|²|2ª|x\u00a0y|x y|Ω|ω|я|Я|日本|ĳ|ij|Å|å|A\u030a|-|--| |.|€|¿que?|que|¡ay!|ay|Peña|peña|Pena|PEÑA|"
          "Núñez|nunez|Muñoz|muñoz|MUÑOZ|Munoz")
          .split(u'|');
  return words;
}

QStringList TextReport(adodb::Connection& connection, const QStringList& words) {
  QStringList report;
  for (const QString& word : words) {
    adodb::Execute(connection, u"INSERT INTO Cabeceras(Nombre) VALUES('{}')", word);
    report +=
        u"unique "_s + word + u": "_s +
        QString::number(ErrorOf([&] { adodb::Execute(connection, u"INSERT INTO Bancos(Numero) VALUES('{}')", word); }));
  }
  report += Rows(connection, u"SELECT Nombre FROM Cabeceras ORDER BY Nombre, IDCabecera"_s);
