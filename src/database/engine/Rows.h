#pragma once

#include <QVariant>

namespace database {

/// The rows of a running statement as an engine hands them out, read once from the first to the last. The statement is
/// given back when the object goes; whoever holds it lets it go before the session leaves.
class Rows {
 public:
  Rows() = default;
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  virtual ~Rows() = default;

  /// Goes to the next row, the first one at first; false behind the last. Raises the engine's refusal. After false or
  /// an error nothing more is asked.
  virtual bool Step() = 0;
  /// A value of the current row, by its position from 0: `int`, `qint64` beyond 32 bits, `double`, `QString`,
  /// automation::Null(). Booleans are the numbers -1 and 0.
  virtual QVariant Value(int position) const = 0;
};

}  // namespace database
