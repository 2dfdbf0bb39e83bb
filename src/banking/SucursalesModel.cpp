#include "banking/SucursalesModel.h"

#include "platform/contract/cConstAccion.h"
#include "resources/Cadenas.h"

#include <algorithm>
#include <array>

namespace {

struct Columna {
  int cadena;
  QString cSucursal::*valor;
};

constexpr std::array columnas{
    Columna{1106, &cSucursal::Codigo},
    Columna{1107, &cSucursal::Nombre},
    Columna{1108, &cSucursal::Direccion},
    Columna{1109, &cSucursal::Provincia},
};

}  // namespace

SucursalesModel::SucursalesModel(const ColeccionSucursales& sucursales, QObject* parent)
    : QAbstractTableModel(parent), m_sucursales(sucursales) {
  Refresh();
}

void SucursalesModel::Refresh() {
  beginResetModel();
  m_rows.clear();
  for (std::size_t i = 0; i < m_sucursales.size(); ++i) {
    if (m_sucursales[i]->Estado != cConstAccion().Eliminar()) {
      m_rows.push_back(i);
    }
  }
  endResetModel();
}

std::shared_ptr<cSucursal> SucursalesModel::At(int row) const {
  return row >= 0 && row < rowCount() ? m_sucursales[m_rows[static_cast<std::size_t>(row)]] : nullptr;
}

int SucursalesModel::RowOf(const std::shared_ptr<cSucursal>& sucursal) const {
  const auto found = std::ranges::find(m_rows, sucursal, [&](std::size_t i) { return m_sucursales[i]; });
  return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

int SucursalesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int SucursalesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columnas.size());
}

QVariant SucursalesModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  const cSucursal& sucursal = *m_sucursales[m_rows[static_cast<std::size_t>(index.row())]];
  return sucursal.*columnas[static_cast<std::size_t>(index.column())].valor;
}

QVariant SucursalesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount()) {
    return {};
  }
  return resources::LoadResString(columnas[static_cast<std::size_t>(section)].cadena);
}
