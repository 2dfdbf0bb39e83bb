#include "host/desktop/RecordModel.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace host {

namespace {

constexpr qsizetype longestShownText = 300;

// One line of a text for a cell.
QString ShownText(const QString& text) {
  return text.size() > longestShownText ? text.left(longestShownText).simplified() + QChar(0x2026) : text.simplified();
}

}  // namespace

void RecordModel::SetRecords(RecordData records) {
  SetRecords(std::move(records), m_sortColumn, m_sortOrder);
}

void RecordModel::SetRecords(RecordData records, int sortColumn, Qt::SortOrder order) {
  beginResetModel();
  m_records = std::move(records);
  m_sortColumn = std::clamp(sortColumn, 0, std::max(0, columnCount() - 1));
  m_sortOrder = order;
  Arrange();
  ApplyFilter();
  endResetModel();
}

void RecordModel::SetFilter(const QString& typed) {
  beginResetModel();
  m_filter = RecordFilter(typed);
  ApplyFilter();
  endResetModel();
}

int RecordModel::IdAt(int row) const {
  return m_records.Id(m_visible[static_cast<std::size_t>(row)]);
}

int RecordModel::RowOf(int id) const {
  const auto found =
      std::find_if(m_visible.begin(), m_visible.end(), [&](int record) { return m_records.Id(record) == id; });
  return found == m_visible.end() ? -1 : static_cast<int>(std::distance(m_visible.begin(), found));
}

QString RecordModel::NameAt(int row, int columns) const {
  const int record = m_visible[static_cast<std::size_t>(row)];
  QString name;
  for (int column = 0; column < columns; ++column) {
    name += m_records.Display(record, column) + u' ';
  }
  return ShownText(name);
}

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_visible.size());
}

int RecordModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_records.Columns().size());
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) {
    return {};
  }
  const ColumnKind kind = m_records.Columns()[index.column()].kind;
  switch (role) {
    case Qt::DisplayRole:
      return ShownText(m_records.Display(m_visible[static_cast<std::size_t>(index.row())], index.column()));
    case Qt::TextAlignmentRole:
      return kind == ColumnKind::Text || kind == ColumnKind::YesNo || kind == ColumnKind::Moment
                 ? QVariant(Qt::AlignVCenter | Qt::AlignLeft)
                 : QVariant(Qt::AlignVCenter | Qt::AlignRight);
    default:
      return {};
  }
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < columnCount()) {
    return m_records.Columns()[section].title;
  }
  return QAbstractTableModel::headerData(section, orientation, role);
}

void RecordModel::sort(int column, Qt::SortOrder order) {
  if (column < 0 || column >= columnCount()) {
    return;
  }
  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  const std::vector<int> before = m_visible;
  m_sortColumn = column;
  m_sortOrder = order;
  Arrange();
  ApplyFilter();

  std::vector<int> newRow(static_cast<std::size_t>(m_records.Size()));
  for (std::size_t row = 0; row < m_visible.size(); ++row) {
    newRow[static_cast<std::size_t>(m_visible[row])] = static_cast<int>(row);
  }
  const QModelIndexList from = persistentIndexList();
  QModelIndexList to;
  to.reserve(from.size());
  for (const QModelIndex& old : from) {
    const int record = before[static_cast<std::size_t>(old.row())];
    to.append(index(newRow[static_cast<std::size_t>(record)], old.column()));
  }
  changePersistentIndexList(from, to);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

void RecordModel::Arrange() {
  if (m_records.Columns().isEmpty()) {
    m_order.clear();
    return;
  }
  m_order = m_records.SortedBy(m_sortColumn);
  if (m_sortOrder == Qt::DescendingOrder) {
    std::reverse(m_order.begin(), m_order.end());
  }
}

void RecordModel::ApplyFilter() {
  m_visible.clear();
  std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(m_visible),
               [this](int record) { return m_filter.Accepts(m_records.SearchText(record)); });
}

}  // namespace host
