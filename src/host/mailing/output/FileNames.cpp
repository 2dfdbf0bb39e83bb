#include "host/mailing/output/FileNames.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Disks take 255 bytes; a letter may be four, and UnfinishedFile and a number add some.
constexpr qsizetype mostBytes = 200;

bool MayStandInName(QChar c) {
  constexpr QStringView refused = u"/\\:*?\"<>|";
  return !refused.contains(c) && c.category() != QChar::Other_Control && c.category() != QChar::Other_Format &&
         c.category() != QChar::Separator_Line && c.category() != QChar::Separator_Paragraph;
}

/// Leaves what stands in brackets at the end, the number that tells people apart.
QString Safe(const QString& wished) {
  const qsizetype number = wished.lastIndexOf(u" ("_s);
  const QString tail = number < 0 ? QString() : wished.mid(number);
  QString name;
  for (const QChar c : wished.left(number < 0 ? wished.size() : number)) {
    name += MayStandInName(c) ? c : u' ';
  }
  name = name.simplified();
  while (name.startsWith(u'.') || name.startsWith(u' ')) {
    name.remove(0, 1);
  }
  while (name.toUtf8().size() > mostBytes) {
    name.chop(name.back().isLowSurrogate() ? 2 : 1);
  }
  return (name + tail).trimmed();
}

}  // namespace

QString FileNames::Next(const QString& wished, const QString& suffix) {
  const QString name = Safe(wished);
  QString unique = name;
  for (int number = 2; m_taken.contains(unique.toCaseFolded()); ++number) {
    unique = u"%1 %2"_s.arg(name, QString::number(number));
  }
  m_taken.insert(unique.toCaseFolded());
  return unique + suffix;
}

}  // namespace host
