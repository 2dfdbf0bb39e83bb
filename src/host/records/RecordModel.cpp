#include "host/records/RecordModel.h"

#include "platform/text/FoldForSearch.h"

#include <QSet>
#include <QThreadPool>

#include <algorithm>
#include <iterator>
#include <memory>
#include <numeric>
#include <utility>

namespace host {

namespace {

constexpr qsizetype longestShownText = 300;

// One line of a text for a cell.
QString ShownText(const QString& text) {
  return text.size() > longestShownText ? text.left(longestShownText).simplified() + QChar(0x2026) : text.simplified();
}

Qt::Alignment Alignment(ColumnKind kind) {
  const bool isNumber = kind == ColumnKind::Number || kind == ColumnKind::Percentage || kind == ColumnKind::Amount;
  return Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft);
}

}  // namespace

void RecordModel::SetRecords(SortedRecords records, Qt::SortOrder order) {
  beginResetModel();
  // Hundreds of thousands of texts take a while to free: not on the window's thread.
  QThreadPool::globalInstance()->start(
      [old = std::make_shared<RecordData>(std::move(m_records))]() mutable { old.reset(); });
  m_records = std::move(records.records);
  m_sortColumn = records.sortColumn;
  m_sortOrder = order;
  Arrange(std::move(records.ascending));
  ApplyFilter();
  endResetModel();
}

void RecordModel::Update(const QList<int>& ids, const RecordData& read) {
  beginResetModel();
  QSet<int> replaced(ids.begin(), ids.end());
  for (int row = 0; row < read.Size(); ++row) {
    replaced.insert(read.Id(row));
  }
  const std::vector<int> newRows = m_records.Remove(replaced);
  for (int& record : m_order) {
    record = newRows[static_cast<std::size_t>(record)];
  }
  std::erase(m_order, -1);
  m_records.Append(read);
  const std::function<bool(int, int)> before = m_records.Before(m_sortColumn);
  for (int record = static_cast<int>(m_order.size()); record < m_records.Size(); ++record) {
    const auto place = std::upper_bound(m_order.begin(), m_order.end(), record, [&](int left, int right) {
      return m_sortOrder == Qt::AscendingOrder ? before(left, right) : before(right, left);
    });
    m_order.insert(place, record);
  }
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

int RecordModel::Find(const QString& typed, int column, int from) const {
  const QString folded = texts::FoldForSearch(typed);
  const int count = rowCount();
  for (int i = 0; i < count; ++i) {
    const int row = (from + i) % count;
    QStringView text = m_records.SearchText(m_visible[static_cast<std::size_t>(row)]);
    for (int skipped = 0; skipped < column; ++skipped) {
      text = text.mid(text.indexOf(u'\n') + 1);
    }
    if (text.startsWith(folded)) {
      return row;
    }
  }
  return -1;
}

RecordExtract RecordModel::Extract(const QList<int>& rows) const {
  if (rows.isEmpty()) {
    return {m_records, m_visible};
  }
  std::vector<int> wanted;
  std::ranges::transform(rows, std::back_inserter(wanted),
                         [this](int row) { return m_visible[static_cast<std::size_t>(row)]; });
  return {m_records, std::move(wanted)};
}

QString RecordModel::LineAt(int row, QList<int> columns) const {
  if (columns.isEmpty()) {
    columns.resize(columnCount());
    std::iota(columns.begin(), columns.end(), 0);
  }
  QStringList texts;
  for (const int column : std::as_const(columns)) {
    texts.append(m_records.Display(m_visible[static_cast<std::size_t>(row)], column).simplified());
  }
  return texts.join(u'\t');
}

QString RecordModel::Headings(const QList<int>& columns) const {
  QStringList titles;
  for (const int column : columns) {
    titles.append(m_records.Columns()[column].title);
  }
  return titles.join(u'\t');
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
  switch (role) {
    case Qt::DisplayRole:
      return ShownText(m_records.Display(m_visible[static_cast<std::size_t>(index.row())], index.column()));
    case Qt::TextAlignmentRole:
      return Alignment(m_records.Columns()[index.column()].kind).toInt();
    default:
      return {};
  }
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && section < columnCount()) {
    const ListColumn& column = m_records.Columns()[section];
    if (role == Qt::DisplayRole) {
      // A wide blank: the room that the numbers below have, too.
      return Alignment(column.kind) & Qt::AlignRight ? column.title + QChar(0x2003) : column.title;
    }
    if (role == Qt::TextAlignmentRole) {
      return Alignment(column.kind).toInt();
    }
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
  Arrange(m_records.SortedBy(column));
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

void RecordModel::Arrange(std::vector<int> ascending) {
  m_order = std::move(ascending);
  if (m_sortOrder == Qt::DescendingOrder) {
    std::reverse(m_order.begin(), m_order.end());
  }
}

void RecordModel::ApplyFilter() {
  if (m_filter.IsEmpty()) {
    m_visible = m_order;
    return;
  }
  m_visible.clear();
  std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(m_visible),
               [this](int record) { return m_filter.Accepts(m_records.SearchText(record)); });
}

}  // namespace host
