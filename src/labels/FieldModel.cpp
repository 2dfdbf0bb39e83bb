#include "labels/FieldModel.h"

#include "labels/FieldEntries.h"
#include "resources/StringTable.h"

#include <algorithm>
#include <array>

namespace labels {

namespace {

constexpr std::array headings{11102, 11103, 11104};

}  // namespace

FieldModel::FieldModel(const FieldCollection& entries, QObject* parent)
    : QAbstractTableModel(parent), m_entries(entries) {
  Refresh();
}

void FieldModel::Refresh() {
  beginResetModel();
  m_rows.clear();
  for (const auto& [key, entry] : m_entries) {
    if (!IsDeleted(*entry)) {
      m_rows.push_back(entry);
    }
  }
  endResetModel();
}

std::shared_ptr<cCampo> FieldModel::At(int row) const {
  return row >= 0 && row < rowCount() ? m_rows[static_cast<std::size_t>(row)] : nullptr;
}

int FieldModel::RowOf(const std::shared_ptr<cCampo>& entry) const {
  const auto found = std::ranges::find(m_rows, entry);
  return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

int FieldModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int FieldModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings.size());
}

QVariant FieldModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  const cCampo& entry = *m_rows[static_cast<std::size_t>(index.row())];
  switch (index.column()) {
    case 0:
      return entry.Campo;
    case 1:
      return int(entry.Linea);
    default:
      return int(entry.Orden);
  }
}

QVariant FieldModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
    return {};
  }
  if (role == Qt::TextAlignmentRole) {
    return int(Qt::AlignLeft | Qt::AlignVCenter);
  }
  if (role != Qt::DisplayRole) {
    return {};
  }
  // The texts begin with the grid's mark of a column that is aligned to the left.
  QString heading = resources::LoadResString(headings[static_cast<std::size_t>(section)]);
  return heading.startsWith(u'<') ? heading.sliced(1) : heading;
}

}  // namespace labels
