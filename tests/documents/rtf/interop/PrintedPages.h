#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QTextDocument;

namespace interop {

/// A line of a printed page.
struct Line {
  int page = 0;
  double left = 0;    ///< Millimetres from the paper's corner, here and below.
  double bottom = 0;  ///< Of its lowest word.
  QString text;
};

/// The lines of a PDF from above, the cells of a row as one line.
QList<Line> LinesOf(const QString& pdf);

/// Prints the letter here, with the usual margins.
void PrintLetter(const QTextDocument& letter, const QString& pdf);

/// Each line that is not on the same page within a millimetre.
QStringList Differences(const QList<Line>& ours, const QList<Line>& theirs);

}  // namespace interop
