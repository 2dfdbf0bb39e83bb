#include "host_mailing/PdfWords.h"

#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace support {

QString OutputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  process.waitForFinished();
  return process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()) : program + u" failed"_s;
}

QList<Word> WordsOf(const QString& pdf) {
  static const QRegularExpression form(uR"re(xMin="([\d.]+)" yMin="([\d.]+)"[^>]*>([^<]*)<)re"_s);
  constexpr double millimetresPerPoint = 25.4 / 72;
  QList<Word> words;
  for (auto at = form.globalMatch(OutputOf(u"pdftotext"_s, {u"-bbox"_s, pdf, u"-"_s})); at.hasNext();) {
    const auto match = at.next();
    words.append({match.captured(3), match.captured(1).toDouble() * millimetresPerPoint,
                  match.captured(2).toDouble() * millimetresPerPoint});
  }
  return words;
}

}  // namespace support
