#include "moving/Source.h"
#include "moving/TableWriter.h"
#include "platform/automation/Error.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

// Has LibreOffice open the spreadsheets that exports write, and write them anew in both of its formats: the same cells
// must come back. Ends with 1 where they don't.

namespace {

const QStringList headings = {u"Código"_s, u"Importe"_s, u"Texto"_s};

// Tabs are not among them: its cells hold none.
QList<QList<QVariant>> HostileRows() {
  const QStringList texts = {u"=1+2"_s,
                             u"=cmd|'/c calc'!A1"_s,
                             u"+34 91"_s,
                             u"-5"_s,
                             u"@uno"_s,
                             u"0049"_s,
                             u"1.234"_s,
                             u"1,5"_s,
                             u"01/02/2003"_s,
                             u"dicen \"sí\"; y\nno"_s,
                             u"a  b "_s,
                             u"\U0001F600 <p>&amp;"_s,
                             u"'con apóstrofo"_s,
                             u"VERDADERO"_s,
                             u"x"_s.repeated(30'000)};
  const QList<QVariant> numbers = {-12.5, 1234567, 0.1, 1e-4, -0.0001, 922337203685.4775};
  QList<QList<QVariant>> rows;
  for (qsizetype i = 0; i < texts.size(); ++i) {
    rows.append({texts[i].left(4), numbers[i % numbers.size()], texts[i]});
  }
  return rows;
}

class Lines : public moving::SourceListener {
 public:
  void BeginTable(const moving::SourceTable& table) override { lines += u"T "_s + table.name; }
  void Row(const moving::SourceRow& row) override {
    QStringList cells;
    for (const moving::SourceCell& cell : row) {
      const bool isNumber = cell.kind == moving::Cell::Number;
      cells += QChar::fromLatin1(char(cell.kind)) +
               (isNumber ? QString::number(cell.text.toDouble(), 'g', 15) : QString(cell.text).remove(u'\r'));
    }
    lines += cells.join(u'|');
  }
  void EndTable(qint64 /*missing*/) override {}
  void Linked(const QString& /*name*/) override {}
  void Unreadable(const QString& name) override { lines += u"X "_s + name; }

  QStringList lines;
};

QStringList Read(const QString& path) {
  Lines lines;
  moving::ReadForeignFile(path, lines, {});
  return lines.lines;
}

bool Convert(const QString& folder, const QString& format, const QString& file) {
  QProcess office;
  office.setProcessChannelMode(QProcess::MergedChannels);
  office.start(u"soffice"_s, {u"-env:UserInstallation=file://%1/profile"_s.arg(folder), u"--headless"_s,
                              u"--convert-to"_s, format, u"--outdir"_s, folder + u'/' + format, file});
  return office.waitForFinished(600'000) && office.exitStatus() == QProcess::NormalExit;
}

int Differences(const QStringList& one, const QStringList& other) {
  int differences = one.size() == other.size() ? 0 : 1;
  for (qsizetype i = 0; i < qMin(one.size(), other.size()); ++i) {
    if (one[i] != other[i]) {
      ++differences;
      std::printf(" != %.200s\n    %.200s\n", qPrintable(one[i]), qPrintable(other[i]));
    }
  }
  return differences;
}

int Run() {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"lista.ods"_s);
  const auto writer = moving::MakeTableWriter(file, moving::Purpose::Data);
  writer->Begin(u"Bancos"_s, headings);
  for (const QList<QVariant>& row : HostileRows()) {
    writer->Write(row);
  }
  writer->Finish();
  const QStringList ours = Read(file);
  int differences = 0;
  for (const QString& format : {u"ods"_s, u"xlsx"_s}) {
    if (!Convert(folder.path(), format, file)) {
      std::puts("LibreOffice has not come to an end.");
      return 1;
    }
    const int found = Differences(ours, Read(folder.path() + u'/' + format + u"/lista."_s + format));
    std::printf("%s lista.ods, LibreOffice's .%s: %lld rows, %d differ\n",
                found == 0 ? "  =" : " !=", qPrintable(format), static_cast<long long>(ours.size()), found);
    differences += found;
  }
  return differences == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  try {
    return Run();
  } catch (const automation::Error& error) {
    std::printf("%s\n", error.what());
    return 1;
  }
}
