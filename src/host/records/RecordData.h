#pragma once

#include "host/records/NodeCatalog.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <functional>
#include <vector>

namespace host {

/// The records of one list, column by column: numbers as numbers, texts as texts, and per record the text that a
/// search looks at. A copy shares everything until one of the two is changed.
class RecordData {
 public:
  explicit RecordData(QList<ListColumn> columns = {});

  /// `values` has one value for each column; a value that does not suit its column is shown as nothing. Of a text the
  /// first thousand characters are kept, shown, sorted by and searched.
  void Append(int id, const QList<QVariant>& values);
  /// Appends the records of a list with the same columns.
  void Append(const RecordData& other);
  /// Removes the records with these keys. Returns what became of each row: its new one, or -1.
  std::vector<int> Remove(const QSet<int>& ids);

  const QList<ListColumn>& Columns() const { return m_columns; }
  int Size() const { return static_cast<int>(m_ids.size()); }
  int Id(int row) const { return m_ids[row]; }
  QString Display(int row, int column) const;
  /// The same for a spreadsheet: texts and moments as texts, numbers as numbers, Booleans, Empty for nothing.
  QVariant Value(int row, int column) const;
  /// Folded as searches compare, a line for each column.
  QStringView SearchText(int row) const { return m_searchTexts[row]; }
  /// The rows in ascending order of a column: texts by Spanish rules, numbers as numbers and behind those without
  /// one. Records that are equal there stay as they were appended.
  std::vector<int> SortedBy(int column) const;
  /// That order's "stands before", of two rows. To be used while this object lives.
  std::function<bool(int, int)> Before(int column) const;

 private:
  struct Cells {
    QList<QString> texts;
    QList<double> numbers;
  };

  std::vector<int> SortedByText(const QList<QString>& texts) const;

  QList<ListColumn> m_columns;
  QList<int> m_ids;
  std::vector<Cells> m_cells;
  QList<QString> m_searchTexts;
};

/// Some records of a list in an order of their own, as they were at one moment; for any thread.
struct RecordExtract {
  RecordData records;
  std::vector<int> rows;  ///< Those of `records`.
};

/// Records with their ascending order by one column, so that the order can be made where nobody waits for it.
struct SortedRecords {
  /// A column that the records lack counts as the first. Not explicit: every list of records can be shown.
  SortedRecords(RecordData list, int column = 0);

  RecordData records;
  int sortColumn = 0;
  std::vector<int> ascending;
};

/// How a list shows a number of that kind; nothing for one that is no number (NaN).
QString DisplayNumber(double value, ColumnKind kind);

}  // namespace host
