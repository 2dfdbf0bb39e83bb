#include "host/records/RecordModel.h"

#include "platform/text/FoldForSearch.h"

#include <QPromise>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <memory>
#include <numeric>
#include <utility>

namespace host {

namespace {

constexpr qsizetype longestShownText = 300;

// A longer list takes more than a few milliseconds.
constexpr int longestSortedAtOnce = 5'000;

// One line of a text for a cell.
QString ShownText(const QString& text) {
  return text.size() > longestShownText ? text.left(longestShownText).simplified() + QChar(0x2026) : text.simplified();
}

Qt::Alignment Alignment(ColumnKind kind) {
  const bool isNumber = kind == ColumnKind::Number || kind == ColumnKind::Percentage || kind == ColumnKind::Amount;
  return Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft);
}

}  // namespace

RecordModel::RecordModel(QObject* parent) : QAbstractTableModel(parent) {
  m_beside.setMaxThreadCount(1);
  connect(&m_sorting, &QFutureWatcherBase::finished, this, [this] {
    // One that is not wanted any more has none.
    if (m_sorting.future().resultCount() > 0) {
      TakeOrder(m_sorting.result());
    }
  });
}

void RecordModel::SetRecords(SortedRecords records, Qt::SortOrder order) {
  beginResetModel();
  DropSorting();
  // Hundreds of thousands of texts take a while to free: not on the window's thread.
  m_beside.start([old = std::make_shared<RecordData>(std::move(m_records))]() mutable { old.reset(); });
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
  std::vector<int> added(static_cast<std::size_t>(m_records.Size()) - m_order.size());
  std::iota(added.begin(), added.end(), static_cast<int>(m_order.size()));
  PutInOrder(std::move(added));
  ApplyFilter();
  endResetModel();
  if (IsSorting()) {
    // What is being sorted is no longer what is shown.
    SortBeside();
  }
}

// Comparing texts costs most: each place is looked for among those behind the last one.
void RecordModel::PutInOrder(std::vector<int> added) {
  const auto before = [&, ascending = m_records.Before(m_shownColumn)](int left, int right) {
    return m_shownOrder == Qt::AscendingOrder ? ascending(left, right) : ascending(right, left);
  };
  std::stable_sort(added.begin(), added.end(), before);
  std::vector<int> order;
  order.reserve(m_order.size() + added.size());
  auto rest = m_order.cbegin();
  for (const int record : added) {
    const auto place = std::upper_bound(rest, m_order.cend(), record, before);
    order.insert(order.end(), rest, place);
    order.push_back(record);
    rest = place;
  }
  order.insert(order.end(), rest, m_order.cend());
  m_order = std::move(order);
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
  m_sortColumn = column;
  m_sortOrder = order;
  DropSorting();
  if (!IsSorting()) {
    return;
  }
  if (m_records.Size() > longestSortedAtOnce) {
    SortBeside();
  } else {
    TakeOrder(m_records.SortedBy(column));
  }
}

void RecordModel::DropSorting() {
  m_sorting.cancel();
  m_sorting.setFuture({});
}

// Records are shared and only an order comes back; of several only the last one's.
void RecordModel::SortBeside() {
  DropSorting();
  const auto sorted = std::make_shared<QPromise<std::vector<int>>>();
  m_sorting.setFuture(sorted->future());
  sorted->start();
  m_beside.start([sorted, records = m_records, column = m_sortColumn] {
    if (!sorted->isCanceled()) {
      sorted->addResult(records.SortedBy(column));
    }
    sorted->finish();
  });
}

void RecordModel::TakeOrder(std::vector<int> ascending) {
  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  const std::vector<int> before = m_visible;
  Arrange(std::move(ascending));
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
  m_shownColumn = m_sortColumn;
  m_shownOrder = m_sortOrder;
  if (m_sortOrder == Qt::DescendingOrder) {
    std::reverse(m_order.begin(), m_order.end());
  }
}

void RecordModel::ApplyFilter() {
  if (m_filter.IsEmpty()) {
    m_visible = m_order;
    return;
  }
  // As they lie in memory: in the order shown each would have to be fetched from somewhere else.
  std::vector<bool> isAccepted(static_cast<std::size_t>(m_records.Size()));
  for (int record = 0; record < m_records.Size(); ++record) {
    isAccepted[static_cast<std::size_t>(record)] = m_filter.Accepts(m_records.SearchText(record));
  }
  m_visible.clear();
  std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(m_visible),
               [&](int record) { return isAccepted[static_cast<std::size_t>(record)]; });
}

}  // namespace host
