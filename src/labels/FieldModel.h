#pragma once

#include "labels/FieldCollection.h"

#include <QAbstractTableModel>

namespace labels {

/// The grid's view over the field dialog's working list: one row per entry that does not wait for its deletion, with
/// the columns field or text, line, position. It holds no copy of an entry.
class FieldModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  FieldModel(const FieldCollection& entries, QObject* parent);

  /// Reads the list again, after entries came, went or changed.
  void Refresh();
  /// The entry of a row, null outside the rows.
  std::shared_ptr<cCampo> At(int row) const;
  /// The row of an entry, -1 for one that is not shown.
  int RowOf(const std::shared_ptr<cCampo>& entry) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const FieldCollection& m_entries;
  std::vector<std::shared_ptr<cCampo>> m_rows;
};

}  // namespace labels
