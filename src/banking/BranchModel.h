#pragma once

#include "banking/cSucursal.h"

#include <QAbstractTableModel>

namespace banking {

/// The grid's view over the bank dialog's own collection: one row per branch that is not marked for deletion, with the
/// columns code, name, address, province. It holds no copy of a branch.
class BranchModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  BranchModel(const BranchCollection& branches, QObject* parent);

  /// Reads the collection again, after branches came, went or were marked.
  void Refresh();
  /// The branch of a row, null outside the rows.
  std::shared_ptr<cSucursal> At(int row) const;
  /// The row of a branch, -1 for one that is not shown.
  int RowOf(const std::shared_ptr<cSucursal>& branch) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const BranchCollection& m_branches;
  std::vector<std::size_t> m_rows;
};

}  // namespace banking
