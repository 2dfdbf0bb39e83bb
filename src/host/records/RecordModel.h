#pragma once

#include "host/records/RecordData.h"
#include "host/records/RecordFilter.h"

#include <QAbstractTableModel>
#include <QFutureWatcher>
#include <QThreadPool>

#include <vector>

namespace host {

/// The records of a list as a view shows them: those that the search accepts, in the order chosen. Only row numbers
/// are moved about, so that a hundred thousand records are searched without a delay. A long list is sorted on another
/// thread and stays as it is until its order is there.
class RecordModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit RecordModel(QObject* parent = nullptr);

  /// Replaces the records; the search is kept.
  void SetRecords(SortedRecords records, Qt::SortOrder order = Qt::AscendingOrder);
  /// Takes over what was read anew of some of the records, and of new ones; those of `ids` that are not there are gone.
  void Update(const QList<int>& ids, const RecordData& read);
  void SetFilter(const QString& typed);

  const QList<ListColumn>& Columns() const { return m_records.Columns(); }
  /// Records before the search.
  int TotalCount() const { return m_records.Size(); }
  /// The order chosen last, which a long list takes a moment to show.
  int SortColumn() const { return m_sortColumn; }
  Qt::SortOrder SortOrder() const { return m_sortOrder; }
  bool IsSorting() const { return m_sortColumn != m_shownColumn || m_sortOrder != m_shownOrder; }
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
  void DropSorting();
  void PutInOrder(std::vector<int> added);
  void SortBeside();
  void TakeOrder(std::vector<int> ascending);
  void Arrange(std::vector<int> ascending);
  void ApplyFilter();

  RecordData m_records;
  RecordFilter m_filter;
  std::vector<int> m_order;    // every record, in the order shown
  std::vector<int> m_visible;  // those of m_order that the search accepts
  int m_sortColumn = 0;
  Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
  int m_shownColumn = 0;  // by which m_order is sorted
  Qt::SortOrder m_shownOrder = Qt::AscendingOrder;
  QFutureWatcher<std::vector<int>> m_sorting;
  QThreadPool m_beside;  // not the toolkit's, for whose threads its painting waits
};

}  // namespace host
