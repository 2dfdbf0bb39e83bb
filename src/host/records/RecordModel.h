#pragma once

#include "host/records/RecordData.h"
#include "host/records/RecordFilter.h"

#include <QAbstractTableModel>

#include <vector>

namespace host {

/// The records of a list as a view shows them: those that the search accepts, in the order chosen. Only row numbers
/// are moved about, so that a hundred thousand records are searched and sorted without a delay.
class RecordModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// Replaces the records; the search is kept.
  void SetRecords(SortedRecords records, Qt::SortOrder order = Qt::AscendingOrder);
  /// Takes over what was read anew of some of the records, and of new ones; those of `ids` that are not there are gone.
  void Update(const QList<int>& ids, const RecordData& read);
  void SetFilter(const QString& typed);

  const QList<ListColumn>& Columns() const { return m_records.Columns(); }
  /// Records before the search.
  int TotalCount() const { return m_records.Size(); }
  int SortColumn() const { return m_sortColumn; }
  Qt::SortOrder SortOrder() const { return m_sortOrder; }
  /// The key of the record in a row of the view.
  int IdAt(int row) const;
  /// The row of the record in the view, -1 when it is not there or the search hides it.
  int RowOf(int id) const;
  /// The first row from `from` on, then from the top, whose text in the column begins with `typed`, without regard to
  /// case and accents; -1 for none.
  int Find(const QString& typed, int column, int from) const;
  /// What the view shows of these rows, in their order; of all rows without them.
  RecordExtract Extract(const QList<int>& rows = {}) const;
  /// The record's whole texts with tabs between them, of these columns, or of all.
  QString LineAt(int row, QList<int> columns = {}) const;
  /// The columns' titles with tabs between them.
  QString Headings(const QList<int>& columns) const;
  /// The record as a question names it: its first `columns` columns.
  QString NameAt(int row, int columns) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  void Arrange(std::vector<int> ascending);
  void ApplyFilter();

  RecordData m_records;
  RecordFilter m_filter;
  std::vector<int> m_order;    // every record, in the order chosen
  std::vector<int> m_visible;  // those of m_order that the search accepts
  int m_sortColumn = 0;
  Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

}  // namespace host
