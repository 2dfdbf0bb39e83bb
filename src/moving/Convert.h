#pragma once

#include "moving/NameMatch.h"

namespace moving {

/// A value on its way into a column: nothing, a text, or a number as digits with a decimal point.
struct Value {
  enum class Kind { None, Text, Number };
  Kind kind = Kind::None;
  QString text;

  bool IsEmpty() const { return text.isEmpty(); }
  /// 0 for what is no whole number of 32 bits.
  qint64 ToId() const;
};

/// The values of a row, by the positions of its table's columns here, or why the row can't come in.
struct ConvertedRow {
  QList<Value> values;
  QString refusal;      ///< Spanish, a sentence without its point; empty for a good row.
  QStringList remarks;  ///< What was changed on the way, in the same form.
  QStringList notes;    ///< What to look at in this row, in the same form.
};

/// Gives a row of the file the types and forms of its table: numbers that were stored as texts and the other way round,
/// zeros in front of codes, dates as yyyy-mm-dd, words for Booleans. A text that is too long comes in whole.
ConvertedRow Convert(const TableMatch& match, const SourceRow& row);

/// The value for people: a number with its comma, of a text the beginning, without line breaks.
QString Shown(const Value& value);

/// The value as it stands in a statement of the layer, with its quotes.
QString Literal(const Value& value);

}  // namespace moving
