#include "documents/letter/LetterPainter.h"
#include "documents/rtf/Rtf.h"
#include "host/mailing/output/FileNames.h"
#include "host/mailing/output/Outputs.h"
#include "host/mailing/output/PdfPages.h"
#include "host/mailing/pieces/ReadMailing.h"
#include "host_mailing/PdfWords.h"
#include "platform/automation/Error.h"
#include "support/SmallDisk.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

using support::OutputOf;
using support::Word;
using support::WordsOf;

/// What is written, looked at by other programs.
class tst_mailing_files : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void LabelsStandWhereTheyShould();
  void LabelsAreNamed();
  void LettersInOneFile();
  void LinesAreThoseOfThePreview();
  void PicturesAreThereOnce();
  void HeadersTablesAndPages();
  void FilesPerPerson();
  void HostileValues();
  void Cancelled();
  void NothingIsLeftOfAFailure();
  void Names();

 private:
  std::unique_ptr<host::LetterMailing> Letters(int letter = 1) const {
    host::LetterWish wish;
    wish.letter = letter;
    wish.selection = u"Suscriptores del Boletín"_s;
    wish.moment = QDateTime(QDate(2026, 11, 21), QTime());
    return host::ReadLetters(m_database.ConnectionString(), wish, 1);
  }
  std::unique_ptr<host::LabelMailing> Labels(const documents::SheetStart& start, bool join = false) const {
    host::LabelWish wish;
    wish.sheet = 1;
    wish.selection = u"Todas las personas"_s;
    wish.order = host::PeopleOrder::Postcode;
    wish.onePerAddress = join;
    wish.start = start;
    return host::ReadLabels(m_database.ConnectionString(), wish, 1);
  }

  support::TestDatabase m_database{database::Content::Demonstration};
  host::RunControl m_control;
};

void tst_mailing_files::LabelsStandWhereTheyShould() {
  m_database.Execute(
      u"UPDATE EtiquetasCampos SET NombreCampo='*X', codTipoCampoEtiqueta=0 WHERE codEtiqueta=1 AND "
      u"Linea=1 AND Orden=1");
  const auto labels = Labels({.first = 7, .skipped = {8, 15}});
  const QString pdf = m_database.Path(u"etiquetas.pdf"_s);
  QVERIFY(host::WritePdf(*labels, pdf, m_control));
  QList<Word> first;
  for (const Word& word : WordsOf(pdf)) {
    if (word.text == u"X"_s) {
      first.append(word);
    }
  }
  QCOMPARE(first.size(), labels->Labels());
  // Labels 7, 9, 10 and 16: the skipped ones are left out. The letter's own side bearing is the font's.
  const double bearing = first[0].x - 5;
  QVERIFY2(std::abs(bearing) < 0.02, qPrintable(QString::number(bearing)));
  QVERIFY(std::abs(first[1].x - first[0].x - 140) < 0.01);
  QVERIFY(std::abs(first[2].x - first[0].x) < 0.01);
  QVERIFY(std::abs(first[2].y - first[0].y - 37) < 0.01);
  QVERIFY(std::abs(first[7].x - first[0].x) < 0.01);
  QVERIFY(std::abs(first[7].y - first[0].y - 3 * 37) < 0.01);
  QCOMPARE(labels->Count(), 1 + (labels->Labels() - 16 + 23) / 24);
  QCOMPARE(labels->LastLabel(), (labels->Labels() - 16 - 1) % 24 + 1);
  QVERIFY(OutputOf(u"pdfinfo"_s, {pdf}).contains(QRegularExpression(u"Pages: +%1\n"_s.arg(labels->Count()))));
}

void tst_mailing_files::LabelsAreNamed() {
  m_database.Execute(u"UPDATE EtiquetasCampos SET NombreCampo='[USUARIOS].[NOMBRE]' WHERE codEtiqueta=1 AND Linea=2");
  m_database.Execute(u"UPDATE Colaboradores SET Nombre='{}' WHERE IDColaborador=1", QString(200, u'm'));
  const auto labels = Labels({}, true);
  QCOMPARE(labels->Faults().size(), 3);
  QVERIFY(labels->Faults()[0].contains(u"[USUARIOS].[NOMBRE]"_s));
  QVERIFY(labels->Faults().join(u' ').contains(u"(1) no cabe"_s));
  // Of 337 people 12 lack an address and ten couples share one.
  QCOMPARE(labels->Notes().leftOut.size(), 12);
  QCOMPARE(labels->Labels(), 337 - 12 - 10);
  QCOMPARE(labels->Notes().abroad, 20);
  QVERIFY_THROWS_EXCEPTION(automation::Error, Labels({.first = 25, .skipped = {}}));
}

void tst_mailing_files::LettersInOneFile() {
  const auto letters = Letters(3);
  const QString pdf = m_database.Path(u"cartas.pdf"_s);
  QFile old(pdf);
  QVERIFY(old.open(QFile::WriteOnly) && old.write("old") == 3);
  old.close();
  QVERIFY(host::WritePdf(*letters, pdf, m_control));
  QCOMPARE(m_control.Done(), letters->Count());
  const QString text = OutputOf(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
  QCOMPARE(text.count(u'\f'), letters->Count());
  QCOMPARE(text.count(u"Boletín Puente de Luz"_s), letters->Count());
  // Left and top margin of the letter, less what the letter's first character leaves free.
  const Word first = WordsOf(pdf).constFirst();
  QVERIFY2(std::abs(first.x - 25) < 0.2, qPrintable(QString::number(first.x)));
  QCOMPARE(OutputOf(u"pdffonts"_s, {pdf}).count(u"Liberation"_s), 1);
}

/// The ground behind values, as the preview has it, moves no letter.
void tst_mailing_files::LinesAreThoseOfThePreview() {
  const auto letters = Letters(3);
  const QString pdf = m_database.Path(u"igual.pdf"_s);
  QVERIFY(host::WritePdf(*letters, pdf, m_control));
  const QString tinted = m_database.Path(u"vista.pdf"_s);
  QFile file(tinted);
  QVERIFY(file.open(QFile::WriteOnly));
  host::PdfPages pages(file, {});
  for (int letter = 0; letter < letters->Count(); ++letter) {
    documents::LetterPainter(*letters->Filled(letter, Qt::yellow), letters->Margins()).Paint(pages.Next(), 0);
  }
  pages.Finish();
  file.close();
  const auto lines = [](const QString& path) { return OutputOf(u"pdftotext"_s, {u"-bbox"_s, path, u"-"_s}); };
  QVERIFY(lines(pdf).count(u"<word"_s) > letters->Count());
  QCOMPARE(lines(tinted).section(u"<body>"_s, 1), lines(pdf).section(u"<body>"_s, 1));
}

void tst_mailing_files::PicturesAreThereOnce() {
  QImage picture(300, 200, QImage::Format_RGB32);
  picture.fill(Qt::darkGreen);
  QByteArray png;
  QBuffer buffer(&png);
  picture.save(&buffer, "PNG");
  m_database.Execute(u"UPDATE CartasModelo SET Contenido='{}' WHERE IDCartaModelo=2",
                     u"{\\rtf1\\ansi {\\pict\\pngblip\\picwgoal3000\\pichgoal2000 "_s +
                         QString::fromLatin1(png.toHex()) + u"}\\par [Nombre]\\par}"_s);
  const auto letters = Letters(2);
  const QString pdf = m_database.Path(u"figuras.pdf"_s);
  QVERIFY(host::WritePdf(*letters, pdf, m_control));
  // A picture on every page, all of them the same object.
  QSet<QString> objects;
  const QStringList rows = OutputOf(u"pdfimages"_s, {u"-list"_s, pdf}).split(u'\n', Qt::SkipEmptyParts).mid(2);
  for (const QString& row : rows) {
    objects.insert(row.simplified().section(u' ', 10, 11));
  }
  QCOMPARE(rows.size(), letters->Count());
  QCOMPARE(objects.size(), 1);
}

/// Headers are filled, footers count each letter's own pages, tables stand as tables.
void tst_mailing_files::HeadersTablesAndPages() {
  m_database.Execute(u"UPDATE CartasModelo SET Contenido='{}' WHERE IDCartaModelo=2",
                     u"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Times New Roman;}}{\\header\\pard Para "
                     u"{\\b [Nombre y apellidos]}\\par}{\\footer\\pard\\qc Hoja \\chpgn\\par}\\pard "
                     u"[Direccion]\\par\\trowd\\cellx3000\\cellx6000\\intbl [CP]\\cell [Poblacion]\\cell\\row\\pard "
                     u"[Encabezado]\\par\\page segunda\\par}"_s);
  const auto letters = Letters(2);
  const QString pdf = m_database.Path(u"tablas.pdf"_s);
  QVERIFY(host::WritePdf(*letters, pdf, m_control));
  const QString text = OutputOf(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
  QCOMPARE(text.count(u'\f'), 2 * letters->Count());
  for (const QString& word : {u"Hoja 1\n"_s, u"Hoja 2\n"_s, u"segunda"_s}) {
    QCOMPARE(text.count(word), letters->Count());
  }
  QCOMPARE(text.count(u"Para "_s), 2 * letters->Count());
  QVERIFY(!text.contains(u'['));
  static const QRegularExpression row(u"\\d{5} {3,}\\p{L}"_s);
  QVERIFY2(text.count(row) > letters->Count() / 2, qPrintable(text.left(400)));
}

void tst_mailing_files::FilesPerPerson() {
  const auto letters = Letters();
  const QDir pdfs(m_database.Path(u"pdf"_s));
  QCOMPARE(host::WritePdfFiles(*letters, pdfs.path(), m_control), letters->Count());
  const QDir riches(m_database.Path(u"rtf"_s));
  QCOMPARE(host::WriteFiles(
               *letters, riches.path(), u".rtf"_s, [&](int i) { return rtf::Write(*letters->Filled(i)); }, m_control),
           letters->Count());
  QCOMPARE(pdfs.entryList(QDir::Files).size(), letters->Count());
  for (const int letter : {0, letters->Count() - 1}) {
    const QString pdf = pdfs.filePath(letters->NameOf(letter) + u".pdf"_s);
    QVERIFY2(OutputOf(u"qpdf"_s, {u"--check"_s, pdf}).contains(u"No syntax"_s), qPrintable(pdf));
    QCOMPARE(QFile::permissions(pdf) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    QFile rich(riches.filePath(letters->NameOf(letter) + u".rtf"_s));
    QVERIFY(rich.open(QFile::ReadOnly));
    QTextDocument read;
    rtf::Read(rich.readAll(), read);
    QCOMPARE(read.toPlainText(), letters->Filled(letter)->toPlainText());
    QStringList words;
    for (const Word& word : WordsOf(pdf)) {
      words.append(word.text);
    }
    QCOMPARE(words.join(u' '), read.toPlainText().simplified());
  }
}

/// Values are text whatever they hold, in files that stay in their folder.
void tst_mailing_files::HostileValues() {
  const QStringList names = {u"{\\b x}"_s,       u"a\\par b"_s,   u"[NIF]"_s,           u"[Nombre"_s,
                             u"שלום"_s,          u"../../x"_s,    u"a\tb\x01z"_s,       u"𓀀"_s,
                             QString(300, u'ñ'), u"\U000F0000"_s, QString(10'000, u'w')};
  support::TestDatabase database(database::Content::Demonstration);
  database.Execute(u"UPDATE CartasModelo SET Contenido='{}' WHERE IDCartaModelo=1",
                   u"{\\rtf1\\ansi <[Nombre]>\\par}"_s);
  for (int i = 0; i < names.size(); ++i) {
    database.Execute(u"UPDATE Colaboradores SET Nombre='{0}', Apellido1='{0}', Apellido2='' WHERE IDColaborador={1}",
                     names[i], i + 1);
    database.Execute(u"INSERT INTO SeleccionesPersonas (codSeleccion, codColaborador, Incluida) VALUES (1, {}, -1)",
                     i + 1);
  }
  host::LetterWish wish;
  wish.letter = 1;
  wish.selection = u"Todas las personas"_s;
  wish.order = host::PeopleOrder::Number;
  const auto letters = host::ReadLetters(database.ConnectionString(), wish, 1);
  QCOMPARE(letters->Count(), names.size());
  QVERIFY2(host::Sentences(letters->Notes().doubtful).join(u'|').contains(u"sale un recuadro"_s),
           qPrintable(host::Sentences(letters->Notes().doubtful).join(u'|')));
  const QDir folder(database.Path(u"hostil"_s));
  host::WritePdfFiles(*letters, folder.path(), m_control);
  host::WriteFiles(
      *letters, folder.path(), u".rtf"_s, [&](int i) { return rtf::Write(*letters->Filled(i)); }, m_control);
  QCOMPARE(folder.entryList(QDir::Files | QDir::Hidden).size(), 2 * names.size());
  for (int i = 0; i < names.size(); ++i) {
    const QStringList mine = folder.entryList({u"*(%1).rtf"_s.arg(i + 1)}, QDir::Files);
    QCOMPARE(mine.size(), 1);
    QFile rich(folder.filePath(mine.constFirst()));
    QVERIFY(rich.open(QFile::ReadOnly));
    QTextDocument read;
    rtf::Read(rich.readAll(), read);
    QCOMPARE(read.toPlainText(), letters->Filled(i)->toPlainText());
    const QString printed = names[i] == u"a\tb\x01z"_s ? read.toPlainText() : u'<' + names[i] + u'>';
    QCOMPARE(read.toPlainText(), printed);
    QVERIFY(!printed.contains(u'\x01'));
  }
}

void tst_mailing_files::Cancelled() {
  const auto letters = Letters();
  host::RunControl control;
  control.Cancel();
  const QString pdf = m_database.Path(u"nada.pdf"_s);
  QVERIFY(!host::WritePdf(*letters, pdf, control));
  QVERIFY(!QFile::exists(pdf));
  QCOMPARE(host::WritePdfFiles(*letters, m_database.Path(u"nada"_s), control), 0);
  QCOMPARE(QDir(m_database.Path(u"nada"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
           0);
}

void tst_mailing_files::NothingIsLeftOfAFailure() {
  const auto letters = Letters();
  QVERIFY_THROWS_EXCEPTION(automation::Error, host::WritePdf(*letters, m_database.Path(u"no/hay/x.pdf"_s), m_control));
  const support::SmallDisk disk;
  if (!disk.IsThere()) {
    QSKIP("no small disk");
  }
  disk.Fill();
  QVERIFY_THROWS_EXCEPTION(automation::Error, host::WritePdf(*letters, disk.Path(u"x.pdf"_s), m_control));
  QVERIFY(!QFile::exists(disk.Path(u"x.pdf"_s)));
}

void tst_mailing_files::Names() {
  host::FileNames names;
  QStringList given;
  for (const QString& wished :
       {u"Pérez Gil, Ana (1)"_s, u"pérez gil, ana (1)"_s, u"../a/b\\c\n (2)"_s, u".oculto (3)"_s, u"  (4)"_s}) {
    given.append(names.Next(wished, u".pdf"_s));
  }
  QCOMPARE(given.join(u'|'), u"Pérez Gil, Ana (1).pdf|pérez gil, ana (1) 2.pdf|a b c (2).pdf|oculto (3).pdf|(4).pdf"_s);
  const QString longest = names.Next(QString(300, u'ñ') + u" (5)"_s, u".pdf"_s);
  QVERIFY(longest.toUtf8().size() < 240 && longest.endsWith(u" (5).pdf"_s));
}

KEL_TEST(tst_mailing_files);
#include "tst_mailing_files.moc"
