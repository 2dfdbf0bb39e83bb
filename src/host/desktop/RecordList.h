#pragma once

#include "host/records/RecordModel.h"

#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QSet>
#include <QTableView>
#include <QTimer>

class QAction;
class QPushButton;

namespace host {

/// The record list: a table of whole rows that keeps what is selected, and the place, through every change of its
/// records, and says in words why it is empty.
class RecordList : public QTableView {
  Q_OBJECT

 public:
  explicit RecordList(QWidget* parent = nullptr);

  const RecordModel& Records() const { return *m_records; }
  /// Shows the records of another list from its beginning. Typing finds records by `typedColumn`.
  void Show(SortedRecords records, Qt::SortOrder order = Qt::AscendingOrder, int typedColumn = 0);
  /// Shows the records of the same list read anew. A selected record that is no longer there gives its place to the
  /// one that follows it.
  void Refresh(SortedRecords records);
  /// The same for some of the records, and for new ones: what was read of them anew.
  void Update(const QList<int>& ids, const RecordData& read);
  void SetFilter(const QString& typed);

  /// The keys of the selected records, from the top.
  QList<int> SelectedIds() const;
  /// Their rows, from the top.
  QList<int> SelectedRows() const;
  int SelectedCount() const;
  /// Selects one record and scrolls to it. False when it is not shown.
  bool SelectRecord(int id);
  /// Selects those that are shown and scrolls to the first. False, and nothing changes, where none is.
  bool SelectRecords(const QList<int>& ids);
  /// One for each column, in pixels, 0 for a fitted one; an empty list fits all columns to what they hold.
  void SetColumnWidths(const QList<int>& widths);
  /// Empty unless the user chose them, now or when they were remembered; 0 for a hidden column.
  QList<int> ChosenWidths() const;
  /// Shows these columns, given by their places in the records, in this order; all but the optional ones, as they
  /// come, without any.
  void SetShownColumns(const QList<int>& columns);
  /// The columns in sight, by their places in the records, in the order shown.
  QList<int> ShownColumns() const;
  /// The same; empty while they are as they come.
  QList<int> ChosenColumns() const;
  /// Asks which columns are wanted, in a menu at that place of the screen.
  void AskForColumns(const QPoint& place);
  /// The selected records into the clipboard, a line each with tabs between the shown columns; with a first line of the
  /// columns' headings where they are wanted. Nothing without a selection.
  void Copy(bool withHeadings) const;
  /// What an empty list says, and the next step below it, with a button; nullptr for none.
  void SetEmptyText(const QString& text, QAction* way = nullptr);
  /// Shows these records in bold for a moment.
  void Mark(const QList<int>& ids);
  bool IsMarked(int row) const;

 Q_SIGNALS:
  /// Enter, or a double click on a record.
  void RecordActivated();
  void SelectedRecordsChanged();
  /// The user wants others.
  void ShownColumnsChanged();

 protected:
  /// Inicio and Fin are the first and the last row.
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void keyboardSearch(const QString& typed) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  /// What is remembered of the list while its rows change.
  struct Place {
    QList<int> selected;
    int current = -1;
    int currentRow = 0;
    bool currentShown = true;  ///< It was in sight, and is to be afterwards.
    int top = -1;
    int topRow = 0;
  };

  Place Remember() const;
  void Restore(const Place& place);
  void Select(const QList<int>& ids, int currentRow);
  void FitRowHeight();
  bool Fills(int column) const;
  QRect EmptyTextPlace() const;
  void PlaceWay();
  int FirstColumn() const;
  bool IsOptional(int column) const;
  void ShowColumn(int column, bool isShown);

  RecordModel* m_records;
  QString m_emptyText;
  QPushButton* m_way;
  QPointer<QAction> m_wayAction;
  QSet<int> m_marked;
  QTimer m_markTime;
  Place m_place;  ///< The last one while the list had rows.
  int m_typedColumn = 0;
  QString m_typed;
  QElapsedTimer m_typedAt;
  bool m_fitting = false;       ///< Columns are being resized by the program.
  bool m_widthsChosen = false;  ///< By the user.
};

}  // namespace host
