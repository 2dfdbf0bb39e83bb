#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

namespace adodb {

/// `State` of a connection or a recordset.
enum ObjectState : int { StateClosed = 0, StateOpen = 1 };

/// The rows that a statement returned, read once from the first to the last.
///
/// Values: whole numbers are `int` (`qint64` beyond 32 bits), decimals `double`, Booleans `bool`, texts
/// `QString`, data without a value automation::Null(). A column is found by the name that the statement gives
/// it, without regard to case, or by its position from 0.
///
/// Errors (automation::Error): 3021 a value or a move beyond the last row, 3265 no such column, 3704 the
/// recordset is closed. A recordset is closed when its connection closes.
class Recordset {
 public:
  Recordset() = default;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;
  /// Closes the recordset.
  virtual ~Recordset();

  virtual int State() const = 0;
  /// True when there is no current row: behind the last one, or when there never was one. (The platform's name
  /// for this is a macro of the C library.)
  virtual bool AtEnd() const = 0;
  virtual void MoveNext() = 0;
  virtual QVariant Field(QStringView name) = 0;
  virtual QVariant Field(int position) = 0;
  virtual int FieldCount() const = 0;
  /// The column's name as the statement spells it.
  virtual QString FieldName(int position) const = 0;
  /// Closing a closed recordset raises 3704, as the platform does.
  virtual void Close() = 0;
};

}  // namespace adodb
