#include "moving/TableWriter.h"
#include "platform/automation/Conversion.h"
#include "support/ErrorOf.h"
#include "support/SmallDisk.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <sys/stat.h>
#include <zip.h>

using namespace Qt::StringLiterals;

namespace {

using Row = QList<QVariant>;

const QStringList headings = {u"Código"_s, u"Importe"_s, u"Texto"_s};
const QList<Row> rows = {
    {u"0049"_s, -12.5, u"=1+2"_s},
    {u"01/02/2003"_s, 1234567, u"dicen \"sí\"; y\r\nno"_s},
    {automation::Null(), 0.1, u"  a  b\tc\n "_s},
    {u"-5"_s, true, u"\U0001F600 @ <p>&amp;"_s},
};

void WriteRows(const QString& path, moving::Purpose purpose) {
  const auto writer = moving::MakeTableWriter(path, purpose);
  writer->Begin(u"Bancos"_s, headings);
  for (const Row& row : rows) {
    writer->Write(row);
  }
  writer->Finish();
}

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : "no file";
}

QByteArray Part(const QString& path, const char* name) {
  zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
  zip_file_t* part = zip_fopen(archive, name, 0);
  QByteArray content(100000, '\0');
  content.truncate(zip_fread(part, content.data(), zip_uint64_t(content.size())));
  zip_fclose(part);
  zip_discard(archive);
  return content;
}

/// The cells of a sheet's content as LINE|LINE, each cell its kind and what it shows.
QStringList Cells(const QByteArray& content) {
  QXmlStreamReader xml(content);
  QStringList lines;
  QStringList cells;
  while (!xml.atEnd()) {
    xml.readNext();
    if (xml.isStartElement() && xml.name() == u"table-row"_s) {
      cells.clear();
    } else if (xml.isStartElement() && xml.name() == u"table-cell"_s) {
      const QXmlStreamAttributes given = xml.attributes();
      cells +=
          given.value(u"office:value-type"_s).left(1).toString() + given.value(u"office:value"_s).toString() + u':';
    } else if (xml.isStartElement() && xml.name() == u"p"_s && !cells.last().endsWith(u':')) {
      cells.last() += u'^';
    } else if (xml.isStartElement() && (xml.name() == u"s"_s || xml.name() == u"tab"_s)) {
      cells.last() += xml.name() == u"s"_s ? u'_' : u'~';
    } else if (xml.isCharacters()) {
      cells.last() += xml.text();
    } else if (xml.isEndElement() && xml.name() == u"table-row"_s) {
      lines += cells.join(u'|');
    }
  }
  return xml.hasError() ? QStringList(xml.errorString()) : lines;
}

}  // namespace

/// Tables written for other programs.
class tst_table_writers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Csv();
  void SheetsOfCells();
  void NothingIsLeftOfAFailure();
};

void tst_table_writers::Csv() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"bancos.CSV"_s);
  WriteRows(path, moving::Purpose::Data);
  const QByteArray data =
      "\xEF\xBB\xBF"
      "Código;Importe;Texto\r\n"
      "0049;-12,5;=1+2\r\n"
      "01/02/2003;1234567;\"dicen \"\"sí\"\"; y\r\nno\"\r\n"
      ";0,1;\"  a  b\tc\n \"\r\n"
      "-5;Sí;\"\xF0\x9F\x98\x80 @ <p>&amp;\"\r\n";
  QCOMPARE(Content(path), data);
  // In a list no text is a formula, and numbers stay numbers.
  WriteRows(path, moving::Purpose::List);
  QCOMPARE(Content(path), QByteArray(data).replace(";=1+2", ";'=1+2").replace("\r\n-5;", "\r\n'-5;"));
  QCOMPARE(QFile(path).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

void tst_table_writers::SheetsOfCells() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"todo.ods"_s);
  const auto writer = moving::MakeTableWriter(path, moving::Purpose::Data);
  writer->Begin(u"Bancos"_s, headings);
  for (const Row& row : rows) {
    writer->Write(row);
  }
  writer->Begin(u"Nombres [dos]"_s, {u"a\x01"
                                     "b"_s});
  writer->Finish();
  const QByteArray begin = Content(path).left(90);
  QVERIFY2(begin.startsWith("PK") && begin.contains("mimetypeapplication/vnd.oasis.opendocument.spreadsheet"),
           "the kind of file does not show in its first bytes");
  const QByteArray content = Part(path, "content.xml");
  QCOMPARE(Cells(content), QStringList({
                               u"s:Código|s:Importe|s:Texto"_s,
                               u"s:0049|f-12.5:-12,5|s:=1+2"_s,
                               u"s:01/02/2003|f1234567:1234567|s:dicen \"sí\"; y^no"_s,
                               u":|f0.1:0,1|s:__a _b~c^_"_s,
                               u"s:-5|s:Sí|s:\U0001F600 @ <p>&amp;"_s,
                               u"s:a�b"_s,
                           }));
  QVERIFY(content.contains("table:name=\"Nombres  dos \""));
}

void tst_table_writers::NothingIsLeftOfAFailure() {
  const support::SmallDisk disk;
  const QTemporaryDir folder;
  const auto entries = [&] {
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  };
  for (const QString& ending : {u".csv"_s, u".ods"_s}) {
    moving::MakeTableWriter(folder.filePath(u"begun"_s + ending), moving::Purpose::Data)->Begin(u"x"_s, headings);
    QCOMPARE(entries(), QStringList());
    QCOMPARE(support::ErrorOf([&] { WriteRows(folder.filePath(u"none/x"_s + ending), moving::Purpose::Data); }), 5);
    // A device is not a file, and stays one.
    const QString pipe = folder.filePath(u"pipe"_s + ending);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(support::ErrorOf([&] { WriteRows(pipe, moving::Purpose::Data); }), 5);
    QCOMPARE(entries(), QStringList(u"pipe"_s + ending));
    QVERIFY(QFile::remove(pipe));
    if (disk.IsThere()) {
      const QString full = disk.Path(u"full"_s + ending);
      QCOMPARE(support::ErrorOf([&] {
                 const auto writer = moving::MakeTableWriter(full, moving::Purpose::Data);
                 writer->Begin(u"x"_s, headings);
                 disk.Fill();
                 for (int i = 0; i < 2000; ++i) {
                   writer->Write(rows[1]);
                 }
                 writer->Finish();
               }),
               5);
      QVERIFY(!QFile::exists(full));
      disk.Free();
    }
  }
  QCOMPARE(support::ErrorOf([&] { WriteRows(folder.filePath(u"x.xls"_s), moving::Purpose::Data); }), 5);
}

KEL_TEST(tst_table_writers);

#include "tst_table_writers.moc"
