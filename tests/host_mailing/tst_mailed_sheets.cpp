#include "host/mailing/output/Outputs.h"
#include "host/mailing/pieces/ReadMailing.h"
#include "host/mailing/pieces/SheetUse.h"
#include "host_mailing/PdfWords.h"
#include "platform/automation/Error.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using adodb::Verbatim;

/// Labels of senders and of bank disks, and what is remembered of sheets.
class tst_mailed_sheets : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Made_data();
  void Made();
  void Remembered();

 private:
  support::TestDatabase m_database{database::Content::Demonstration};
};

void tst_mailed_sheets::Made_data() {
  QTest::addColumn<QVariantMap>("wish");
  QTest::addColumn<QString>("expected");
  m_database.Execute(
      u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, codTipoCampoEtiqueta) VALUES (3, "
      u"'[EMISORES].[CP]', True, 5, 2, 0)");
  m_database.Execute(u"INSERT INTO Discos (IDDisco, CodPresentador, FechaCreacion) VALUES (7, 99, 'x')");
  // One person with two subscriptions; a sheet with fifty fields; one that is wider than the paper.
  m_database.Execute(u"INSERT INTO Selecciones (IDSeleccion, Nombre, codUsuario) VALUES (77, 'Uno', 1)");
  m_database.Execute(u"INSERT INTO SeleccionesPersonas (codSeleccion, codColaborador, Incluida) VALUES (77, 302, -1)");
  m_database.Execute(u"UPDATE Suscripciones SET NumeroEjemplares=2 WHERE CodColaborador=302");
  m_database.Execute(
      u"INSERT INTO Suscripciones (CodColaborador, CodTipoPublicacion, NumeroEjemplares) VALUES (302, 3, 1)");
  for (const QString& measures : {u"50, 'h50', 4, 1, 5, 20"_s, u"51, 'h51', 4, 1, 5, 21"_s}) {
    m_database.Execute(
        u"INSERT INTO ETIQUETAS (IDETIQUETA, NOMBRE, NETIQUETASTOTAL, NETIQUETASANCHO, ALTOETIQUETA, ANCHOETIQUETA, "
        u"ALTOSEPARACION, ANCHOSEPARACION, ALTO1ETIQUETA, ANCHO1ETIQUETA) VALUES ({}, 0, 0, 0, '0,5')",
        Verbatim{measures});
  }
  for (int field = 0; field < 50; ++field) {
    m_database.Execute(
        u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, codTipoCampoEtiqueta) VALUES "
        u"({}, '{}', 0, {}, {}, 0)",
        50, field % 10 == 9 ? u"[COLABORADORES].[CP]"_s : u"*a"_s, 1 + field / 10, 1 + field % 10);
  }
  m_database.Execute(
      u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, codTipoCampoEtiqueta) VALUES (51, "
      u"'[COLABORADORES].[NOMBRE]', 0, 1, 1, 0)");
  const auto row = [](const char* name, const QVariantMap& wish, const QString& expected) {
    QTest::newRow(name) << wish << expected;
  };
  const QString disk =
      u"G99000010 001 Publicaciones Puente de Luz 9101 0001 08/01/2024 15/01/2024 118 2.415,00 * [EMISORES].[CP]"_s;
  row("disks", {{u"sheet"_s, 3}, {u"issuer"_s, 2}, {u"disk"_s, 1}}, disk);
  row("a disk without anything", {{u"sheet"_s, 3}, {u"disk"_s, 7}}, u"x 0 0,00 * [EMISORES].[CP]"_s);
  row("which issuer", {{u"sheet"_s, 3}, {u"disk"_s, 1}}, u"Publicaciones Puente de Luz (2)"_s);
  row("no such disk", {{u"sheet"_s, 3}, {u"disk"_s, 12}}, u"disco con el número 12"_s);
  row("people on disks", {{u"sheet"_s, 3}, {u"people"_s, u"Todas las personas"_s}}, u"es de discos bancarios"_s);
  row("nobody on a postal sheet", {{u"sheet"_s, 1}}, u"no es de discos bancarios"_s);
  row("sender", {{u"sheet"_s, 1}, {u"letterhead"_s, 2}, {u"copies"_s, 2}},
      u"FUNDACIÓN PUENTE DE LUZ Delegación Norte Calle de la Ría, 7 39003 Santander FUNDACIÓN PUENTE DE LUZ "
      "Delegación Norte Calle de la Ría, 7 39003 Santander"_s);
  const QString one = u"Uno"_s;
  const QString fields = u"a a a a a a a a a 28470"_s;
  row("fifty fields", {{u"sheet"_s, 50}, {u"people"_s, one}}, (fields + u' ').repeated(5).trimmed());
  row("beyond the paper", {{u"sheet"_s, 51}, {u"people"_s, one}}, u"Inés * h51"_s);
  row("one for each copy", {{u"sheet"_s, 51}, {u"people"_s, one}, {u"asCopies"_s, true}}, u"Inés Inés Inés * h51"_s);
  row("no such sender", {{u"sheet"_s, 1}, {u"letterhead"_s, 9}}, u"cabecera con el número 9"_s);
}

void tst_mailed_sheets::Made() {
  QFETCH(QVariantMap, wish);
  QFETCH(QString, expected);
  host::LabelWish wanted;
  wanted.sheet = wish.value(u"sheet"_s).toInt();
  wanted.letterhead = wish.value(u"letterhead"_s).toInt();
  wanted.copies = wish.value(u"copies"_s, 1).toInt();
  wanted.asManyAsCopies = wish.value(u"asCopies"_s).toBool();
  wanted.selection = wish.value(u"people"_s).toString();
  if (wish.contains(u"disk"_s)) {
    wanted.disks.disks.append(wish.value(u"disk"_s).toInt());
  }
  if (wish.contains(u"issuer"_s)) {
    wanted.disks.issuers.append(wish.value(u"issuer"_s).toInt());
  }
  try {
    const auto labels = host::ReadLabels(m_database.ConnectionString(), wanted, 1);
    host::RunControl control;
    const QString pdf = m_database.Path(u"hoja.pdf"_s);
    host::WritePdf(*labels, pdf, control);
    QStringList words;
    for (const support::Word& word : support::WordsOf(pdf)) {
      words.append(word.text);
    }
    QString found = words.join(u' ');
    for (const QString& fault : labels->Faults()) {
      found += u" * "_s + fault.section(u'«', 1).section(u'»', 0, 0);
    }
    QCOMPARE(found, expected);
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(expected), qPrintable(error.Description()));
  }
}

void tst_mailed_sheets::Remembered() {
  adodb::Connection& connection = m_database.Connection();
  QCOMPARE(host::LastUsedSheet(connection), 0);
  for (const auto& [label, next] : {std::pair(7, 8), {24, 1}, {1, 2}}) {
    QVERIFY(host::RememberLastLabel(connection, 1, label));
    QCOMPARE(host::StartBehindLast(connection, 1), next);
  }
  QVERIFY(host::RememberLastLabel(connection, 2, 30));
  QCOMPARE(host::LastUsedSheet(connection), 2);
  QCOMPARE(
      m_database.Query(u"SELECT NULTIMAETIQUETA, ULTIMOUTILIZADO FROM ETIQUETAS WHERE IDETIQUETA<4 ORDER BY IDETIQUETA")
          .join(u' '),
      u"1|0 30|1 0|0"_s);
  // A sheet that is gone or has fewer labels now.
  QVERIFY(!host::RememberLastLabel(connection, 9, 1));
  QVERIFY(!host::RememberLastLabel(connection, 1, 25));
  QCOMPARE(host::LastUsedSheet(connection), 2);
  host::SaveLabelFont(connection, 1, {.family = u"DejaVu Sans"_s, .points = 8.5, .left = 0.75});
  host::SaveLabelFont(connection, 1, {.family = u"DejaVu Sans"_s, .points = 9.5, .left = 0.25});
  const documents::LabelFont font = host::ReadLabelFont(connection, 1);
  QCOMPARE(font.family, u"DejaVu Sans"_s);
  QCOMPARE(font.points, 9.5);
  QCOMPARE(font.left, 0.25);
}

KEL_TEST(tst_mailed_sheets);
#include "tst_mailed_sheets.moc"
