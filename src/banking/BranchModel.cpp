#include "banking/BranchModel.h"

#include "platform/contract/cConstAccion.h"
#include "resources/StringTable.h"

#include <algorithm>
#include <array>

namespace banking {
namespace {

struct Column {
  int stringId;
  QString cSucursal::*value;
};

constexpr std::array columns{
    Column{1106, &cSucursal::Codigo},
    Column{1107, &cSucursal::Nombre},
    Column{1108, &cSucursal::Direccion},
    Column{1109, &cSucursal::Provincia},
};

}  // namespace

BranchModel::BranchModel(const BranchCollection& branches, QObject* parent)
    : QAbstractTableModel(parent), m_branches(branches) {
  Refresh();
}

void BranchModel::Refresh() {
  beginResetModel();
  m_rows.clear();
  for (std::size_t i = 0; i < m_branches.size(); ++i) {
    if (m_branches[i]->Estado != cConstAccion().Eliminar()) {
      m_rows.push_back(i);
    }
  }
  endResetModel();
}

std::shared_ptr<cSucursal> BranchModel::At(int row) const {
  return row >= 0 && row < rowCount() ? m_branches[m_rows[static_cast<std::size_t>(row)]] : nullptr;
}

int BranchModel::RowOf(const std::shared_ptr<cSucursal>& branch) const {
  const auto found = std::ranges::find(m_rows, branch, [&](std::size_t i) { return m_branches[i]; });
  return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

int BranchModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int BranchModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant BranchModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  const cSucursal& branch = *m_branches[m_rows[static_cast<std::size_t>(index.row())]];
  return branch.*columns[static_cast<std::size_t>(index.column())].value;
}

QVariant BranchModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount()) {
    return {};
  }
  return resources::LoadResString(columns[static_cast<std::size_t>(section)].stringId);
}

}  // namespace banking
