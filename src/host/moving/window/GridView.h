#pragma once

#include "host/moving/window/GridModel.h"

#include <QTableView>

namespace host {

/// A GridModel on the screen: rows are chosen, Tab leaves it, a click, F2, the space bar or Return opens a row's
/// choice.
class GridView : public QTableView {
  Q_OBJECT

 public:
  GridView(const char* name, const QString& accessibleName, const QStringList& headings, QWidget* parent);

  GridModel& Rows() { return *m_model; }
  /// Replaces the rows; the current one stays where it can.
  void Show(int rows, GridModel::Ask cell);
  /// The columns' widths in letters; the last column has the rest.
  void SetWidths(const QList<int>& letters);
  /// -1 for none.
  int CurrentRow() const { return currentIndex().row(); }

 Q_SIGNALS:
  void Chosen(int row, int column, int choice);
  void RowReached(int row);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void OpenChoice(int row);
  void Spread();

  GridModel* m_model;
  QList<int> m_letters;
};

}  // namespace host
