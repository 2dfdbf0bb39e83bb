#pragma once

#include <QAbstractTableModel>

#include <vector>

namespace publications {

/// The live subscriptions of a publication that are of one type.
struct SubscriptionSummary {
  QString type;
  QString amount;  ///< Of all of them together, as it is shown.
  QString count;
};

/// The grid of a publication's subscriptions: one row per type, with the columns type, amount, count.
class SubscriptionModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  void SetRows(std::vector<SubscriptionSummary> rows);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<SubscriptionSummary> m_rows;
};

}  // namespace publications
