#pragma once

#include <QMap>
#include <QString>

#include <functional>

namespace rtf {

enum class Outcome {
  RichText,
  PlainText,  ///< The input is no RTF and was taken as text.
  Refused,    ///< A limit was reached; the document is empty.
};

/// What became of an input.
struct Report {
  Outcome outcome = Outcome::RichText;
  /// Why it was refused, in Spanish, for the user.
  QString reason;
  /// The control words and groups that are kept but not shown, and those that are left out, with how often each was
  /// met. Names without backslash.
  QMap<QString, int> carried;
  QMap<QString, int> dropped;
};

/// What is accepted; beyond it an input is refused.
struct Limits {
  qsizetype bytes = 128 * 1024 * 1024;
  int paragraphs = 1'000'000;
  /// Different formats of characters and of paragraphs, each: Qt keeps about a kilobyte for one.
  qsizetype formats = 50'000;
  /// Tables in tables: what is deeper is shown as paragraphs, with the tables around it, and not refused.
  int tableLevels = 8;
  /// Cells of one table, beyond which it goes on in another one: Qt lays a whole table out for every key.
  int tableCells = 400;
  /// Asked many times in a second while reading; where it answers false the rest is refused. May be empty.
  std::function<bool()> goOn = {};
};

}  // namespace rtf
