#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace support {

/// What another program prints; its name and "failed" where it fails.
QString OutputOf(const QString& program, const QStringList& arguments);

struct Word {
  QString text;
  double x = 0;  ///< Millimetres from the paper's corner, here and below.
  double y = 0;
};

/// The words of a PDF as another program finds them.
QList<Word> WordsOf(const QString& pdf);

}  // namespace support
