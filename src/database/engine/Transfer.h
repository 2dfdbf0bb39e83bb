#pragma once

#include "database/Maintenance.h"
#include "database/Schema.h"
#include "platform/adodb/Connection.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace database {

/// A value on its way from one engine to another.
struct CarriedValue {
  enum class Kind { Null, Number, Text };
  Kind kind = Kind::Null;
  QByteArray digits;  ///< Of a number, in the shortest form that reads back as the same one.
  QString text;
};

/// A row, in the order of its table's columns.
using CarriedRow = std::vector<CarriedValue>;

/// Takes the rows of one table.
class RowTaker {
 public:
  RowTaker() = default;
  RowTaker(const RowTaker&) = delete;
  RowTaker& operator=(const RowTaker&) = delete;
  virtual ~RowTaker() = default;

  virtual void Add(const CarriedRow& row) = 0;
  /// Behind the last row.
  virtual void Finish() {}
};

/// A database of the current version whose rows are read, inside a transaction that shows one moment of it.
class TransferSource {
 public:
  TransferSource() = default;
  TransferSource(const TransferSource&) = delete;
  TransferSource& operator=(const TransferSource&) = delete;
  virtual ~TransferSource() = default;

  virtual adodb::Connection& Connection() const = 0;
  /// The highest key that the engine has ever given in that table, 0 for none.
  virtual qint64 LastKey(const Table& table) const = 0;
};

/// A database of the current version that has no rows yet.
class TransferTarget : public TransferSource {
 public:
  virtual std::unique_ptr<RowTaker> Taker(const Table& table) const = 0;
  /// The next key that the engine gives there is higher than `key`.
  virtual void CountOnFrom(const Table& table, qint64 key) const = 0;
};

/// Whether a table goes along: locks belong to the programs that are at work on a database, passwords to a file.
bool IsCarried(const Table& table);

/// Carries all rows over with their keys, reads back what has arrived and compares it: number of rows, last key, and a
/// hash over every value. Raises EngineFailure, naming the table, where the two differ; Stopped; and the refusals of
/// both engines. Gives the number of tables and rows.
CopySize CarryRows(const TransferSource& source, const TransferTarget& target, const Stop& stop = {});

}  // namespace database
