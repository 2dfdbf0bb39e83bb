#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace moving {

/// What became of a table of the file.
struct TableReport {
  QString there;  ///< Its name in the file,
  QString here;   ///< and here; empty for one that does not come in.
  QString why;    ///< Why it does not, a sentence without its point.
  qint64 read = 0;
  qint64 created = 0;
  qint64 known = 0;    ///< Were here already.
  qint64 revived = 0;  ///< Of these, marked as deleted here and live again now.
  qint64 leftOut = 0;
  qint64 missing = 0;             ///< The file says it has more rows.
  qint64 firstNumber = 0;         ///< Of the new numbers where the file's could not be kept; 0 where they were.
  QMap<QString, qint64> remarks;  ///< What was changed on the way, how often.
  QStringList lines;              ///< Rows that are left out, or are otherwise than in the file: the first thousand.
  qint64 moreLines = 0;

  void AddLine(const QString& line);
};

/// What an import did, or would do.
struct ImportReport {
  QString file;
  QString digest;  ///< SHA-256, hexadecimal.
  bool isWritten = false;
  QList<TableReport> tables;
  QStringList elsewhere;   ///< Tables of the file that are in another file.
  QStringList unreadable;  ///< Tables whose definition is damaged.

  qint64 Read() const;
  qint64 Created() const;
  /// Rows and tables that would be lost.
  bool HasLosses() const;
  /// For people, in Spanish: a line for each table, and under it what there is to say.
  QString Text() const;
};

}  // namespace moving
