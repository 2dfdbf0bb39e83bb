#pragma once

#include "host/records/RecordData.h"

namespace host {

/// A list as it leaves the window: what is in sight, in its order, as it was at one moment. For any thread.
struct ListTable {
  QString title;       ///< "Bancos"
  QString search;      ///< What was searched in it; empty for nothing.
  QString origin;      ///< Whose list it is: the office or the database.
  QString user;        ///< Who takes it out.
  RecordExtract rows;  ///< The shown records.
  QList<int> columns;  ///< The shown columns, by their places in the records, in the order shown.

  int RowCount() const { return static_cast<int>(rows.rows.size()); }
  int ColumnCount() const { return static_cast<int>(columns.size()); }
  QString Heading(int column) const { return Column(column).title; }
  QStringList Headings() const;
  /// Numbers stand at the right.
  bool IsNumber(int column) const;
  bool IsText(int column) const { return Column(column).kind == ColumnKind::Text; }
  QString Text(int row, int column) const { return rows.records.Display(Record(row), columns[column]); }
  QVariant Value(int row, int column) const { return rows.records.Value(Record(row), columns[column]); }

  /// "6 registros que contienen «caja»".
  QString CountText() const;

 private:
  const ListColumn& Column(int column) const { return rows.records.Columns().at(columns[column]); }
  int Record(int row) const { return rows.rows[static_cast<std::size_t>(row)]; }
};

}  // namespace host
