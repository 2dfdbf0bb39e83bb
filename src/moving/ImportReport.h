#pragma once

#include "moving/Answers.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace moving {

/// Something to know of a row of the file, or to be asked about it.
struct Finding {
  qsizetype row = 0;      ///< From 0.
  QString name = {};      ///< "IDBanco 41", "Fila 3",
  QString label = {};     ///< and what stands in it: "0777 · Caja de la Ribera".
  QString what = {};      ///< A sentence without its point.
  QString here = {};      ///< What is here instead; may be empty.
  QString question = {};  ///< "Bancos 41 numero", see Answers; empty for a mere note.
  QList<Choice> choices = {};
  qsizetype answer = 0;  ///< The choice that holds.

  bool IsQuestion() const { return !question.isEmpty(); }
  /// "IDBanco 41 (0777 · Caja de la Ribera): su número es también el de IDBanco 40; entra como eliminado
  /// [Bancos 41 numero=eliminado]".
  QString Line() const;
};

/// What became of a table of the file.
struct TableReport {
  QString there;  ///< Its name in the file,
  QString here;   ///< and here; empty for one that does not come in.
  QString why;    ///< Why it does not, a sentence without its point.
  qint64 read = 0;
  qint64 created = 0;
  qint64 known = 0;      ///< Were here already.
  qint64 revived = 0;    ///< Of these, marked as deleted here and live again now,
  qint64 changed = 0;    ///< and those that get values of the file.
  qint64 differing = 0;  ///< Of those that were here, whose other values stay.
  qint64 leftOut = 0;
  qint64 skipped = 0;             ///< Deleted ones that nothing refers to, left out by wish.
  qint64 missing = 0;             ///< The file says it has more rows.
  QStringList leftColumns;        ///< Columns of the file that go nowhere.
  qint64 firstNumber = 0;         ///< Of the new numbers where the file's could not be kept; 0 where they were.
  QMap<QString, qint64> remarks;  ///< What was changed on the way, how often.
  QList<Finding> findings;        ///< In the order of their rows; the first 20,000.
  qint64 moreFindings = 0;

  void Add(Finding finding);
};

/// What an import did, or would do.
struct ImportReport {
  QString file;
  QString digest;  ///< SHA-256, hexadecimal.
  QString seal;    ///< The same for two imports of one file that do the same.
  bool isWritten = false;
  QList<TableReport> tables;
  QStringList elsewhere;   ///< Tables of the file that are in another file.
  QStringList unreadable;  ///< Tables whose definition is damaged.
  QStringList warnings;    ///< Of the file as a whole, sentences.

  qint64 Sum(qint64 TableReport::*count) const;
  /// Rows that would be created, changed or live again.
  qint64 Written() const;
  /// Questions, answered as they are.
  qint64 Questions() const;
  /// Rows and tables that would be lost.
  bool HasLosses() const;
  /// For people, in Spanish: a line for each table, and under it what there is to say.
  QString Text() const;
};

}  // namespace moving
