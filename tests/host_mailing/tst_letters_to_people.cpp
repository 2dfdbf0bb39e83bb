#include "host/mailing/pieces/LetterMailing.h"
#include "platform/automation/Error.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using documents::Subject;

namespace {

/// The texts of all letters, paragraphs between "|", lines between "/", letters between "#".
QString Texts(const host::LetterMailing& letters) {
  QStringList texts;
  for (int i = 0; i < letters.Count(); ++i) {
    texts.append(
        letters.Filled(i)->toRawText().replace(QChar::ParagraphSeparator, u'|').replace(QChar::LineSeparator, u'/'));
  }
  return texts.join(u'#');
}

}  // namespace

/// Letters filled with what the database holds.
class tst_letters_to_people : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void Filled_data();
  void Filled();
  void Installations();
  void LeftOut();
  void Refused_data();
  void Refused();

 private:
  /// Letters of this text to the hand-picked people.
  QString Letters(const QString& text, const QString& people, host::LetterWish wish = {});

  support::TestDatabase m_database{database::Content::Demonstration};
  host::MailingNotes m_notes;
  QStringList m_faults;
};

void tst_letters_to_people::initTestCase() {
  // 341: next to nothing; 342: with all kinds of rows.
  m_database.Execute(
      u"INSERT INTO Colaboradores (IDColaborador, codpais, CodEncabezado, CodProvincia) VALUES "
      u"(341, NULL, 99, 99)");
  m_database.Execute(
      u"INSERT INTO Colaboradores (IDColaborador, Tratamiento, Nombre, Apellido1, Apellido2, NIF, "
      u"Direccion, Poblacion, CP, CodProvincia, codpais, CodEncabezado) VALUES (342, 'D.ª', 'Ana', 'Pérez', "
      u"'Gil', '99000103F', 'Calle Mayor, 1', 'Soria', '42001', 42, 35, 1)");
  // 343: in a country that is gone.
  m_database.Execute(
      u"INSERT INTO Colaboradores (IDColaborador, Apellido1, Direccion, Poblacion, codpais) VALUES "
      u"(343, 'Sol', 'Rua A, 1', 'Ponta', 9999)");
  for (const QString& row : {u"1, '1.000,50', '2023-03-01', 'uno'"_s, u"1, '249,50', '2023-12-31', 'dos'"_s,
                             u"2, '10', '2023-06-01', 'tres'"_s, u"4, '7', '2023-07-01', 'cuatro'"_s,
                             u"1, '0', '2024-01-01', 'cinco'"_s, u"1, '5', 'enero', 'seis'"_s}) {
    m_database.Execute(
        u"INSERT INTO Donativos (CodColaborador, CodTipoDonativo, Importe, Fecha, TextoRecibo) VALUES "
        u"(342, {})",
        adodb::Verbatim{row});
  }
  m_database.Execute(
      u"INSERT INTO Suscripciones (CodColaborador, CodTipoPublicacion, CodTipoSuscripcion, Importe, "
      u"FechaAlta) VALUES (342, 2, 1, '24,60', '2020-02-29')");
}

QString tst_letters_to_people::Letters(const QString& text, const QString& people, host::LetterWish wish) {
  m_database.Execute(u"DELETE FROM SeleccionesPersonas WHERE codSeleccion=1");
  for (const QString& person : people.split(u' ', Qt::SkipEmptyParts)) {
    m_database.Execute(u"INSERT INTO SeleccionesPersonas (codSeleccion, codColaborador, Incluida) VALUES (1, {}, -1)",
                       person.toInt());
  }
  m_database.Execute(u"UPDATE CartasModelo SET Contenido='{}' WHERE IDCartaModelo=1",
                     u"{\\rtf1\\ansi "_s + text + u'}');
  wish.letter = 1;
  wish.selection = u"Todas las personas"_s;
  wish.order = host::PeopleOrder::Number;
  wish.moment = QDateTime(QDate(2026, 11, 21), QTime(9, 5));
  const host::LetterMailing letters(m_database.Connection(), wish, 1);
  m_notes = letters.Notes();
  m_faults = letters.Faults();
  return Texts(letters);
}

void tst_letters_to_people::Filled_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("people");
  QTest::addColumn<QVariantMap>("wish");
  QTest::addColumn<QString>("expected");
  const auto row = [](const char* name, const char* text, const char* people, const QVariantMap& wish,
                      const QString& expected) {
    QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(people) << wish << expected;
  };
  row("a person",
      "[Tratamiento] [Nombre] [Apellidos], [Apellidos y nombre], [Nombre y apellidos] [NIF] [Cod. Benefactor]\\par "
      "[Direccion]\\par [CP] [Poblacion]\\par [Provincia]\\par [Pais]\\par [Encabezado]",
      "342", {},
      u"D.ª Ana Pérez Gil, Pérez Gil, Ana, Ana Pérez Gil 99000103F 342|Calle Mayor, 1|42001 Soria|Soria|Estimada amiga:"_s);
  row("abroad", "[Nombre y apellidos]\\par [CP] [Poblacion]\\par [Provincia]\\par [Pais]\\par x", "337", {},
      u"Étienne Garzón|31000 Toulouse|FRANCIA|x"_s);
  row("hardly anything",
      "[Tratamiento] [Nombre y apellidos] x\\par [CP] [Provincia]\\par [Pais]\\par [Encabezado]\\par y", "341",
      {{u"all"_s, true}}, u"x|y"_s);
  row("dates", "[dd/mm/aaaa]|[dd/mm/aaaa hh:mm]|[wd, dd de mmm de aaaa]", "342", {},
      u"21/11/2026|21/11/2026 09:05|sábado, 21 de noviembre de 2026"_s);
  row("last donation", "[Importe del donativo], [Fecha del donativo], [Finalidad del donativo], [Texto del recibo]",
      "342", {}, u"5,00, enero, Ayuda general, seis"_s);
  row("donations of some dates", "[Importe del donativo] [Fecha del donativo] [Periodicidad del donativo].", "342",
      {{u"from"_s, QDate(2023, 12, 1)}, {u"until"_s, QDate(2024, 1, 1)}, {u"period"_s, u"mensual"_s}},
      u"249,50 31/12/2023 mensual.#0,00 01/01/2024 mensual."_s);
  row("subscription",
      "[Publicacion de la suscripcion], [Importe de la suscripcion], [Periodicidad de la suscripcion], [Fecha de la "
      "suscripcion] [Finalidad de la suscripcion] ([Nombre Completo del bienhechor receptor])",
      "342", {}, u"Cuadernos de voluntariado, 24,60, Anual, 29/02/2020 Cuadernos de voluntariado"_s);
  row("annual return", "[Finalidad modelo] [Importe total] [Deduccion fisica] [Deduccion juridica]", "342",
      {{u"year"_s, 2023}}, u"Ayuda general 1.250,00 80 40#Becas de estudio 10,00 80 40"_s);
  row("two at one address", "[Tratamiento] [Nombre y apellidos]\\par [Direccion]\\par [Encabezado]", "303 302 301 304",
      {{u"join"_s, true}},
      u"D. Lorenzo y D.ª Inés Bermúdez Olmedo|Ronda del Mirador, 18|Estimados amigos:#D. Martín Escudero Lozano y D.ª "
      "Adela Fariñas Rebollo|Calle Mayor, 7, 2.º A|Estimados amigos:"_s);
  row("below a letterhead", "[Nombre]", "342", {{u"letterhead"_s, 2}},
      u"FUNDACIÓN PUENTE DE LUZ/Delegación Norte/Calle de la Ría, 7/39003 Santander/|Ana"_s);
  row("never joined", "[NIF]x", "341 341", {{u"join"_s, true}, {u"all"_s, true}}, u"x"_s);
  for (const auto& [marker, expected] : {std::pair("[Nombre]", u"Lorenzo#Inés"_s),
                                         {"[Apellidos]", u"Bermúdez Olmedo#Bermúdez Olmedo"_s},
                                         {"[Apellidos y nombre]", u"Bermúdez Olmedo, Lorenzo#Bermúdez Olmedo, Inés"_s},
                                         {"[NIF]", u"99400138A#99400175V"_s},
                                         {"[Cod. Benefactor]", u"301#302"_s}}) {
    row(marker, marker, "301 302", {{u"join"_s, true}}, expected);
  }
}

void tst_letters_to_people::Filled() {
  QFETCH(QString, text);
  QFETCH(QString, people);
  QFETCH(QVariantMap, wish);
  host::LetterWish wanted;
  wanted.onePerAddress = wish.value(u"join"_s).toBool();
  wanted.withoutAddressToo = wish.value(u"all"_s).toBool();
  wanted.from = wish.value(u"from"_s).toDate();
  wanted.until = wish.value(u"until"_s).toDate();
  wanted.year = wish.value(u"year"_s).toInt();
  wanted.letterhead = wish.value(u"letterhead"_s).toInt();
  wanted.donationPeriod = wish.value(u"period"_s).toString();
  QStringList keys = people.split(u' ');
  keys.removeDuplicates();
  QTEST(Letters(text, keys.join(u' '), wanted), "expected");
  QCOMPARE(m_faults, QStringList());
}

void tst_letters_to_people::Installations() {
  const QString names =
      u"[Nombre y apellidos], [Tratamiento] [Nombre y apellidos], [Tratamiento], [Nombre y apellidos]"_s;
  m_database.Execute(u"UPDATE configuracion SET Tipo=1, velumar=True");
  QCOMPARE(Letters(names, u"342"_s), u"D.ª Ana Pérez Gil, D.ª Ana Pérez Gil, D.ª, D.ª Ana Pérez Gil"_s);
  const QString shared =
      u"[Finalidad de la suscripcion] [Importe de la suscripcion] [Periodicidad de la suscripcion]"_s;
  host::LetterWish wish;
  wish.donationPeriod = u"anual"_s;
  wish.subject = Subject::Donation;
  QCOMPARE(Letters(shared, u"342"_s, wish), u"Ayuda general 5,00 anual"_s);
  wish.subject = Subject::Subscription;
  QCOMPARE(Letters(shared, u"342"_s, wish), u"Cuadernos de voluntariado 24,60 Anual"_s);
  QVERIFY_THROWS_EXCEPTION(automation::Error, Letters(shared, u"342"_s));
  QCOMPARE(Letters(u"[Importe de la suscripcion] [Publicacion de la suscripcion]"_s, u"342"_s),
           u"24,60 Cuadernos de voluntariado"_s);
  m_database.Execute(u"UPDATE configuracion SET Tipo=0, velumar=False");
}

void tst_letters_to_people::LeftOut() {
  QCOMPARE(Letters(u"[Importe del donativo]"_s, u"321 333 342"_s), u"5,00"_s);
  QCOMPARE(host::Sentences(m_notes.leftOut).join(u'|'),
           u"Escudero Núñez, Violeta (321): sin dirección|Parroquia de Nuestra Señora de los "
           "Remedios (333): sin donativo"_s);
  QCOMPARE(m_notes.doubtful.size(), 1);
  QVERIFY(m_notes.doubtful.constFirst().reason.contains(u"26127"_s));
  Letters(u"{\\header\\fs400 alto\\par alto\\par}{\\shp{\\*\\shpinst x}}[NIF]"_s, u"342"_s);
  QCOMPARE(m_notes.remarks.size(), 2);
  QCOMPARE(m_notes.abroad, 0);
  QVERIFY2(m_notes.remarks[1].contains(u"RTF por persona"_s), qPrintable(m_notes.remarks.join(u'|')));
  Letters(u"[CP] [Poblacion]"_s, u"337 342 343"_s);
  QCOMPARE(m_notes.abroad, 2);
  QVERIFY2(m_notes.remarks.join(u' ').contains(u"«[Pais]»"_s), qPrintable(m_notes.remarks.join(u'|')));
  QCOMPARE(host::Sentences(m_notes.doubtful).join(u'|'), u"Sol (343): su país ya no existe"_s);
  m_database.Execute(u"UPDATE CartasModelo SET Contenido='Hola, [Nombre]' WHERE IDCartaModelo=2");
  host::LetterWish wish;
  wish.letter = 2;
  wish.selection = u"Todas las personas"_s;
  const host::LetterMailing plain(m_database.Connection(), wish, 1);
  QVERIFY2(plain.Faults().join(u' ').contains(u"sin formato"_s), qPrintable(plain.Faults().join(u'|')));
}

void tst_letters_to_people::Refused_data() {
  QTest::addColumn<QString>("change");
  QTest::addColumn<QString>("word");
  QTest::newRow("no letter") << u"Eliminado=True"_s << u"número 3"_s;
  QTest::newRow("two kinds") << u"Contenido='[NIF] [Importe total] [Importe del donativo]'"_s << u"[Importe total]"_s;
  QTest::newRow("20 MB") << u"Contenido='{\\rtf1 "_s + QString(20 * 1024 * 1024, u'x') + u"}'"_s << u"demasiadas"_s;
  QTest::newRow("no room") << u"MargenIzquierdo='12', MargenDerecho='10'"_s << u"márgenes"_s;
}

void tst_letters_to_people::Refused() {
  QFETCH(QString, change);
  QFETCH(QString, word);
  m_database.Execute(u"UPDATE CartasModelo SET {}, Nombre='x' WHERE IDCartaModelo=3", adodb::Verbatim{change});
  host::LetterWish wish;
  wish.letter = 3;
  wish.selection = u"Todas las personas"_s;
  try {
    const host::LetterMailing letters(m_database.Connection(), wish, 1);
    QFAIL("not refused");
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(word), qPrintable(error.Description()));
  }
  m_database.Execute(u"UPDATE CartasModelo SET Eliminado=False, Contenido='x' WHERE IDCartaModelo=3");
}

KEL_TEST(tst_letters_to_people);
#include "tst_letters_to_people.moc"
