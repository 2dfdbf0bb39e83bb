#include "moving/FrameParser.h"
#include "moving/Source.h"
#include "moving/TableWriter.h"
#include "moving/ZipPacking.h"
#include "platform/automation/Error.h"
#include "support/DesktopFile.h"
#include "support/ErrorOf.h"
#include "support/TestProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;
using support::DesktopFile;

namespace {

/// What is read as lines; long texts shortened to their length and end.
class Lines : public moving::SourceListener {
 public:
  void BeginTable(const moving::SourceTable& table) override {
    QStringList columns;
    for (const moving::SourceColumn& column : table.columns) {
      columns += column.name + u':' + QChar::fromLatin1(char(column.kind));
    }
    lines += u"T "_s + table.name + (columns.isEmpty() ? QString() : u' ' + columns.join(u' '));
  }
  void Row(const moving::SourceRow& row) override {
    QStringList cells;
    for (const moving::SourceCell& cell : row) {
      const QString text =
          cell.text.size() <= 100 ? cell.text : u"%1...%2"_s.arg(cell.text.size()).arg(cell.text.right(5));
      cells += QChar::fromLatin1(char(cell.kind)) + text;
    }
    lines += cells.join(u'|');
  }
  void EndTable(qint64 missing) override {
    if (missing > 0) {
      lines += u"missing %1"_s.arg(missing);
    }
  }
  void Linked(const QString& name) override { lines += u"L "_s + name; }
  void Unreadable(const QString& name) override { lines += u"X "_s + name; }

  QStringList lines;
};

QString WriteFile(const QTemporaryDir& folder, const QString& name, const QByteArray& bytes) {
  QFile file(folder.filePath(name));
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

/// The lines, and behind them the error if there was one.
QStringList Read(const QString& path) {
  Lines lines;
  try {
    moving::ReadForeignFile(path, lines, {});
  } catch (const automation::Error& error) {
    lines.lines += u"error %1"_s.arg(error.Number());
  }
  return lines.lines;
}

QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Letter by letter what such a file may have.
QByteArray Database(DesktopFile::Kind kind = DesktopFile::Kind::Mdb) {
  DesktopFile file(kind);
  file.AddTable(u"Todo"_s, {{u"Id"_s, DesktopFile::Long},
                            {u"Sí"_s, DesktopFile::Bool},
                            {u"Byte"_s, DesktopFile::Byte},
                            {u"Int"_s, DesktopFile::Int},
                            {u"Importe"_s, DesktopFile::Money},
                            {u"Corto"_s, DesktopFile::Float},
                            {u"Largo"_s, DesktopFile::Double},
                            {u"Fecha"_s, DesktopFile::Date},
                            {u"Texto"_s, DesktopFile::Text},
                            {u"Contenido"_s, DesktopFile::Memo}});
  const QVariant none;
  const qint64 most = std::numeric_limits<qint64>::max();
  file.AddRow({1, true, 255, -32768, most, 0.1F, 0.1, 37623.0, u"Peña"_s, u"corto"_s});
  file.AddRow({-5, false, 0, 32767, std::numeric_limits<qint64>::min(), -1.5F, 1e20, -0.5, u""_s, u""_s});
  file.AddRow({7, false, none, none, qint64(1), none, none, 37623.75, none, none});
  file.AddDeletedRow({8, true, 1, 1, qint64(1), 1.0F, 1.0, 1.0, u"deleted"_s, u"deleted"_s});
  file.AddMovedRow(
      {9, true, 1, 1, qint64(-125000), 1.0F, 1.0, 1.0, QString(u"a\0b\U0001F600"_s), u"x"_s.repeated(3000)});
  file.AddOlderRow({10, true, 1, 1, qint64(0), 1.0F, 1.0, 1.0, u"older"_s, none}, 1);
  file.AddRow({11, true, 1, 1, qint64(0), 1.0F, 1.0, 1.0,
               QByteArray("\x3D\xD8"
                          "a\0",
                          4),
               u"{\\rtf1 "_s + u"\U0001F600"_s.repeated(999'995) + u"end}"_s});
  file.AddTable(
      u"CartasModelo"_s,
      {{u"IDCartaModelo"_s, DesktopFile::Long}, {u"Contenido"_s, DesktopFile::Ole}, {u"Foto"_s, DesktopFile::Ole}});
  file.AddRow({1, QByteArray("{\\rtf1 \xE1}"), QByteArray("{\\rtf1 }")});
  file.AddLinkedTable(u"Otra"_s);
  file.AddTable(u"Vacía"_s, {{u"Id"_s, DesktopFile::Long}});
  file.SayCount(3);
  return file.Bytes();
}

const QStringList databaseLines = {
    u"T Todo Id:n Sí:b Byte:n Int:n Importe:n Corto:n Largo:n Fecha:d Texto:t Contenido:t"_s,
    u"n1|b-1|n255|n-32768|n922337203685477.5807|n0.1|n0.1|d2003-01-02|tPeña|tcorto"_s,
    u"n-5|b0|n0|n32767|n-922337203685477.5808|n-1.5|n100000000000000000000|d1899-12-30T12:00:00|t|t"_s,
    u"n7|b0|-|-|n0.0001|-|-|d2003-01-02T18:00:00|-|-"_s,
    QString(u"n9|b-1|n1|n1|n-12.5000|n1|n1|d1899-12-31|ta\0b\U0001F600|t3000...xxxxx"_s),
    u"n10|b-1|n1|n1|n0|n1|n1|d1899-12-31|tolder|-"_s,
    u"n11|b-1|n1|n1|n0|n1|n1|d1899-12-31|t�a|t2000001...\xDE00"
    "end}"_s,
    u"T CartasModelo IDCartaModelo:n Contenido:t Foto:?"_s,
    u"n1|t{\\rtf1 á}|-"_s,
    u"L Otra"_s,
    u"T Vacía Id:n"_s,
    u"missing 3"_s,
};

QString Workbook(const QTemporaryDir& folder, const QByteArray& sheet, const QByteArray& more = {}) {
  QFile file(folder.filePath(u"libro.xlsx"_s));
  const QByteArray head = "<?xml version=\"1.0\"?>";
  const std::vector<moving::ZipPart> parts = {
      {"xl/workbook.xml", head + "<workbook xmlns:r=\"u:r\"><sheets><sheet name=\"Hoja &amp; 1\" r:id=\"a\"/>"
                                 "<sheet name=\"Gráfico\" r:id=\"b\"/></sheets></workbook>"},
      {"xl/_rels/workbook.xml.rels", head + "<R><R Id=\"a\" Target=\"worksheets/s1.xml\"/></R>"},
      {"xl/sharedStrings.xml", head + "<sst>" + more +
                                   "<si><t>0049</t></si><si><r><t>Caja </t></r><r><t>Norte</t></r>"
                                   "<rPh><t>no</t></rPh></si></sst>"},
      {"xl/styles.xml", head + "<s><numFmts><numFmt numFmtId=\"170\" formatCode=\"[Red]&quot;d&quot;0.00\"/>"
                               "<numFmt numFmtId=\"171\" formatCode=\"dd\\/mm\\/yy\"/></numFmts><cellStyleXfs>"
                               "<xf numFmtId=\"14\"/></cellStyleXfs><cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/>"
                               "<xf numFmtId=\"170\"/><xf numFmtId=\"171\"/></cellXfs></s>"},
      {"xl/worksheets/s1.xml", head + "<worksheet><sheetData>" + sheet + "</sheetData></worksheet>"}};
  return file.open(QIODevice::WriteOnly) && moving::Pack(parts, file) ? file.fileName() : QString();
}

QString Ods(const QTemporaryDir& folder, const QByteArray& rows) {
  QFile file(folder.filePath(u"hoja.ods"_s));
  const std::vector<moving::ZipPart> parts = {
      {"content.xml",
       "<?xml version=\"1.0\"?><o:d xmlns:o=\"u:o\" xmlns:office=\"u:o\" xmlns:table=\"u:t\" xmlns:text=\"u:x\" "
       "xmlns:calcext=\"u:c\"><table:table table:name=\"Uno\">" +
           rows + "</table:table></o:d>"}};
  return file.open(QIODevice::WriteOnly) && moving::Pack(parts, file) ? file.fileName() : QString();
}

}  // namespace

/// Files of other programs, read by kel-lector.
class tst_foreign_files : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void DatabaseFiles();
  void Workbooks();
  void Sheets();
  void HostileSheets();
  void WhatWeWroteIsRead();
  void DamagedFiles();
  void NonsenseFromTheReader();
  void OtherKindsAreNamed();
};

void tst_foreign_files::DatabaseFiles() {
  const QTemporaryDir folder;
  QCOMPARE(Read(WriteFile(folder, u"a.mdb"_s, Database())), databaseLines);
  QCOMPARE(Read(WriteFile(folder, u"a.accdb"_s, Database(DesktopFile::Kind::Accdb))), databaseLines);
  // Encrypted: the pages are nothing.
  QByteArray encrypted = Database(DesktopFile::Kind::Accdb);
  for (qsizetype i = 4096; i < encrypted.size(); ++i) {
    encrypted[i] = char(encrypted[i] ^ 0x5A);
  }
  Lines lines;
  try {
    moving::ReadForeignFile(WriteFile(folder, u"b.accdb"_s, encrypted), lines, {});
    QFAIL("read");
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(u"protegido"_s), error.what());
  }
}

void tst_foreign_files::Workbooks() {
  const QTemporaryDir folder;
  QCOMPARE(
      Read(Workbook(
          folder,
          "<row r=\"2\"><c r=\"A2\" t=\"s\"><v>0</v></c><c r=\"C2\" t=\"s\"><v>1</v></c></row>"
          "<row r=\"3\"><c r=\"A3\" s=\"1\"><v>37623</v></c><c r=\"B3\" s=\"2\"><v>37623</v></c><c r=\"C3\" s=\"3\">"
          "<v>37623.5</v></c><c r=\"D3\" t=\"b\"><v>1</v></c><c r=\"E3\" t=\"e\"><v>#N/A</v></c><c r=\"F3\" "
          "t=\"inlineStr\"><is><t>dentro_x000A_y_x00G0_</t></is></c><c r=\"G3\" t=\"str\"><f>A1</f><v>f</v></c><c "
          "r=\"H3\"><f>1</f>"
          "</c><c r=\"I3\"><v>1E-3</v></c></row><row r=\"5\"><c r=\"A5\"/></row>")),
      QStringList({u"T Hoja & 1"_s, u""_s, u"t0049|-|tCaja Norte"_s,
                   u"d2003-01-02|n37623|d2003-01-02T12:00:00|b-1|e|tdentro\ny_x00G0_|tf|e|n0.001"_s, u"X Gráfico"_s}));
}

void tst_foreign_files::Sheets() {
  const QTemporaryDir folder;
  QCOMPARE(
      Read(Ods(
          folder,
          "<table:table-row table:number-rows-repeated=\"2\"><table:table-cell office:value-type=\"string\"><text:p>a"
          "<text:s text:c=\"2\"/>b<text:tab/></text:p><text:p>c</text:p><office:annotation><text:p>nota</text:p>"
          "</office:annotation></table:table-cell><table:table-cell table:number-columns-repeated=\"2\"/>"
          "<table:table-cell office:value-type=\"currency\" office:value=\"-1.5\"><text:p>-1,50 "
          "€</text:p></table:table-cell>"
          "<table:table-cell table:number-columns-repeated=\"16000\"/></table:table-row>"
          "<table:table-row><table:table-cell office:value-type=\"date\" office:date-value=\"2003-01-02\"/>"
          "<table:table-cell office:value-type=\"boolean\" office:boolean-value=\"true\"/>"
          "<table:table-cell office:value-type=\"string\" "
          "calcext:value-type=\"error\"><text:p>#N/A</text:p></table:table-cell>"
          "</table:table-row><table:table-row table:number-rows-repeated=\"1048570\"><table:table-cell "
          "table:number-columns-repeated=\"16384\"/></table:table-row>")),
      QStringList({u"T Uno"_s, u"ta  b\t\nc|-|-|n-1.5"_s, u"ta  b\t\nc|-|-|n-1.5"_s, u"d2003-01-02|b-1|e"_s}));
}

void tst_foreign_files::HostileSheets() {
  const QTemporaryDir folder;
  const QByteArray cell = "<table:table-cell office:value-type=\"string\"%1><text:p>x</text:p></table:table-cell>";
  const QByteArray wide = QByteArray(cell).replace("%1", " table:number-columns-repeated=\"300\"");
  const QByteArray often = "<table:table-row table:number-rows-repeated=\"268000000\">" +
                           QByteArray(cell).replace("%1", "") + "</table:table-row>";
  for (const QByteArray& rows : {"<table:table-row>" + wide + "</table:table-row>", often,
                                 QByteArray("<table:table-row table:number-rows-repeated=\"-5\"/>"),
                                 QByteArray("<table:table-row>&none;</table:table-row>")}) {
    QCOMPARE(Read(Ods(folder, rows)).last(), u"error 5"_s);
  }
  QCOMPARE(Read(Workbook(folder, "<row r=\"9999999\"><c t=\"b\"><v>1</v></c></row>")).last(), u"error 5"_s);
  QCOMPARE(Read(Workbook(folder, "<row><c r=\"A1\" t=\"s\"><v>9</v></c></row>")).last(), u"error 5"_s);
  // Something that unpacks to more memory than a reader may have; under the sanitizers it has no limit.
  if (!IS_SANITIZED) {
    const QByteArray bomb = "<si><t>" + QByteArray(300 << 20, 'x') + "</t></si>";
    QCOMPARE(Read(Workbook(folder, "<row/>", bomb)).last(), u"error 5"_s);
  }
}

void tst_foreign_files::WhatWeWroteIsRead() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"todo.ods"_s);
  const auto writer = moving::MakeTableWriter(path, moving::Purpose::Data);
  writer->Begin(u"Bancos"_s, {u"Número"_s, u"Importe"_s});
  for (const QString& text : {u"0049"_s, u"=cmd|'/c'!A1"_s, u"  a  b\t\r\nc\rd\n "_s, u"1.234 \"ñ\" \U0001F600"_s}) {
    writer->Write(QList<QVariant>{text, -0.1});
  }
  writer->Finish();
  QCOMPARE(Read(path), QStringList({u"T Bancos"_s, u"tNúmero|tImporte"_s, u"t0049|n-0.1"_s, u"t=cmd|'/c'!A1|n-0.1"_s,
                                    u"t  a  b\t\r\nc\rd\n |n-0.1"_s, u"t1.234 \"ñ\" \U0001F600|n-0.1"_s}));
}

void tst_foreign_files::DamagedFiles() {
  const QTemporaryDir folder;
  const QByteArray database = Database().left(100 * 4096);
  const QByteArray book = Bytes(Workbook(folder, "<row><c t=\"s\"><v>0</v></c></row>"));
  const QByteArray sheet =
      Bytes(Ods(folder, "<table:table-row><table:table-cell><text:p>x</text:p></table:table-cell></table:table-row>"));
  QRandomGenerator random(1);
  int refused = 0;
  const int rounds = qMax(1, qEnvironmentVariableIntValue("KEL_DAMAGED_FILES"));
  for (int round = 0; round < 30 * rounds; ++round) {
    QByteArray bytes = std::array{database, book, sheet}[std::size_t(round) % 3];
    if (round % 2 == 0) {
      bytes.truncate(qsizetype(random.bounded(quint32(bytes.size() - 1))) + 1);
    } else {
      for (int i = 0; i < 20; ++i) {
        // The first pages, where the definitions are, more often.
        bytes[qsizetype(random.bounded(
            quint32(i % 2 == 0 ? bytes.size() : qMin(bytes.size(), qsizetype(20 * 4096)))))] = char(random.generate());
      }
    }
    QElapsedTimer time;
    time.start();
    const QStringList lines = Read(WriteFile(folder, u"damaged"_s, bytes));
    QVERIFY2(time.elapsed() < 60'000, "the reader hangs");
    refused += !lines.isEmpty() && lines.last() == u"error 5"_s ? 1 : 0;
  }
  QVERIFY2(refused >= 20 * rounds, qPrintable(QString::number(refused)));
}

void tst_foreign_files::NonsenseFromTheReader() {
  const auto frame = [](char letter, const QByteArray& content) {
    const auto size = quint32(content.size());
    return QByteArray(1, letter) + QByteArray(reinterpret_cast<const char*>(&size), 4) + content;
  };
  const auto text = [](const QByteArray& content) {
    const auto size = quint32(content.size());
    return QByteArray(reinterpret_cast<const char*>(&size), 4) + content;
  };
  const QByteArray file = frame('V', text("mdb"));
  const QByteArray table = frame('T', text("t") + QByteArray("\2\0\0\0\1\0", 6) + text("c") + 't');
  const QByteArray row = frame('R', 't' + text("x"));
  const QByteArray end = frame('E', QByteArray("\1\0\0\0", 4));
  const QByteArray whole = file + table + row + end + frame('Z', {});
  Lines lines;
  moving::FrameParser parser(lines);
  for (const char each : whole) {
    parser.Take(QByteArray(1, each));
  }
  QVERIFY(parser.IsWhole());
  QCOMPARE(lines.lines, QStringList({u"T t c:t"_s, u"tx"_s, u"missing 1"_s}));
  for (const QByteArray& bad :
       {table, file + file, file + row, file + table + table, file + end, whole + row, file + frame('q', {}),
        file + QByteArray("R\xFF\xFF\xFF\xFF", 5), file + table + frame('R', "t\xFF\xFF\xFF\xFFx"),
        file + table + frame('R', "z"), file + table + frame('R', "--"), file + table + frame('R', {}),
        file + table + end, file + frame('T', text("t") + QByteArray("\0\0\0\0\xFF\xFF", 6)),
        file + frame('L', text(QByteArray(5000, 'x')))}) {
    QCOMPARE(support::ErrorOf([&] { moving::FrameParser(lines).Take(bad); }), 5);
  }
  // A flood of rows ends, too.
  moving::FrameParser flooded(lines, 2);
  flooded.Take(file + table + row + row);
  QCOMPARE(support::ErrorOf([&] { flooded.Take(row); }), 5);
}

void tst_foreign_files::OtherKindsAreNamed() {
  const QTemporaryDir folder;
  const auto said = [&](const QString& name, const QByteArray& bytes) {
    try {
      moving::KindOfFile(WriteFile(folder, name, bytes));
    } catch (const automation::Error& error) {
      return error.Description();
    }
    return QString();
  };
  QVERIFY(said(u"a.xls"_s, "\xD0\xCF\x11\xE0 old").contains(u"guárdela como .xlsx"_s));
  QVERIFY(said(u"a.xls"_s, " <!DOCTYPE html>").contains(u"página web"_s));
  QVERIFY(said(u"a.xlsx"_s, "%PDF-1.4").contains(u"PDF"_s));
  QVERIFY(said(u"a.mdb"_s, {}).contains(u"vacío"_s));
  QVERIFY(said(u"a.mdb"_s, "SQLite format 3").contains(u"restaurar"_s));
  QVERIFY(said(u"a.txt2"_s, "words").contains(u"No se sabe"_s));
  QCOMPARE(said(u"a.csv"_s, "a;b"), QString());
  QCOMPARE(support::ErrorOf([&] { moving::KindOfFile(folder.path()); }), 5);
  QCOMPARE(support::ErrorOf([&] { moving::KindOfFile(folder.filePath(u"none"_s)); }), 5);
}

KEL_TEST(tst_foreign_files);

#include "tst_foreign_files.moc"
