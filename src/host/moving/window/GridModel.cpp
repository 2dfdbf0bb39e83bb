#include "host/moving/window/GridModel.h"

#include "platform/text/AsItStands.h"

#include <QGuiApplication>
#include <QPalette>

#include <utility>

namespace host {

GridModel::GridModel(const QStringList& headings, QObject* parent)
    : QAbstractTableModel(parent), m_headings(headings) {}

void GridModel::Show(int rows, Ask cell) {
  beginResetModel();
  m_rows = rows;
  m_cell = std::move(cell);
  endResetModel();
}

void GridModel::SetHeadings(const QStringList& headings) {
  beginResetModel();
  m_headings = headings;
  endResetModel();
}

void GridModel::Update() {
  if (m_rows > 0) {
    Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1));
  }
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_rows;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_headings.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !m_cell) {
    return {};
  }
  const GridCell cell = m_cell(index.row(), index.column());
  switch (role) {
    case Qt::DisplayRole:
      return cell.text;
    case Qt::ToolTipRole:
      return texts::AsItStands(cell.text);
    case Qt::EditRole:
      return cell.choices ? QVariant(cell.choice) : QVariant(cell.text);
    case choicesRole:
      return cell.choices ? QVariant(cell.choices()) : QVariant();
    case Qt::DecorationRole:
      return cell.icon.isNull() ? QVariant() : QVariant(cell.icon);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter | (cell.isNumber ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ForegroundRole:
      return cell.isDim ? QVariant(QGuiApplication::palette().brush(QPalette::PlaceholderText)) : QVariant();
    case Qt::AccessibleTextRole:
      return QVariant(m_headings.value(index.column()) + QStringLiteral(": ") + cell.text);
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(m_headings.value(section)) : QVariant();
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.isValid() && m_cell && m_cell(index.row(), index.column()).choices ? flags | Qt::ItemIsEditable : flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) {
    return false;
  }
  Q_EMIT Chosen(index.row(), index.column(), value.toInt());
  return true;
}

}  // namespace host
