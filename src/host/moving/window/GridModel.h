#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QStringList>

#include <functional>

namespace host {

/// What a cell shows.
struct GridCell {
  QString text = {};
  bool isNumber = false;  ///< Stands at the right.
  bool isDim = false;     ///< Of what does not come in.
  QIcon icon = {};
  /// The texts of a choice and the one that holds; the cell is a box to choose from where there are any.
  std::function<QStringList()> choices = {};
  int choice = -1;
};

/// Rows that are asked for cell by cell as they are shown, so that twenty thousand are as quick as twenty.
class GridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using Ask = std::function<GridCell(int row, int column)>;

  /// The texts of a choice, QStringList; Qt::EditRole is the number of the one that holds.
  static constexpr int choicesRole = Qt::UserRole + 1;

  explicit GridModel(const QStringList& headings, QObject* parent = nullptr);

  /// Replaces the rows; `cell` is asked until the next call.
  void Show(int rows, Ask cell);
  void SetHeadings(const QStringList& headings);
  /// The cells say something else now, in the same rows.
  void Update();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  /// Somebody chose otherwise.
  void Chosen(int row, int column, int choice);

 private:
  QStringList m_headings;
  int m_rows = 0;
  Ask m_cell;
};

}  // namespace host
