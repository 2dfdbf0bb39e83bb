#include "publications/SubscriptionModel.h"

#include "resources/StringTable.h"

#include <array>
#include <utility>

namespace publications {
namespace {

struct Column {
  int stringId;
  QString SubscriptionSummary::*value;
  Qt::Alignment alignment;
};

constexpr std::array columns{
    Column{15100, &SubscriptionSummary::type, Qt::AlignLeft | Qt::AlignVCenter},
    Column{15101, &SubscriptionSummary::amount, Qt::AlignRight | Qt::AlignVCenter},
    Column{15102, &SubscriptionSummary::count, Qt::AlignRight | Qt::AlignVCenter},
};

}  // namespace

void SubscriptionModel::SetRows(std::vector<SubscriptionSummary> rows) {
  beginResetModel();
  m_rows = std::move(rows);
  endResetModel();
}

int SubscriptionModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int SubscriptionModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant SubscriptionModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  const Column& column = columns[static_cast<std::size_t>(index.column())];
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(column.alignment);
  }
  return role == Qt::DisplayRole ? m_rows[static_cast<std::size_t>(index.row())].*column.value : QVariant();
}

QVariant SubscriptionModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
    return {};
  }
  const Column& column = columns[static_cast<std::size_t>(section)];
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(column.alignment);
  }
  return role == Qt::DisplayRole ? resources::LoadResString(column.stringId) : QVariant();
}

}  // namespace publications
