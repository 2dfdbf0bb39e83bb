#include "host/desktop/RecordList.h"

#include "host/desktop/RecordCells.h"
#include "host/look/SelectionTone.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSet>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// In characters; a longer text is cut until the user widens its column.
constexpr int widestFittedColumn = 45;
constexpr std::chrono::seconds markTime{2};

}  // namespace

RecordList::RecordList(QWidget* parent)
    : QTableView(parent), m_records(new RecordModel(this)), m_way(new QPushButton(viewport())) {
  m_way->hide();
  connect(m_way, &QPushButton::clicked, this, [this] {
    if (m_wayAction) {
      m_wayAction->trigger();
    }
  });
  m_markTime.setSingleShot(true);
  m_markTime.setInterval(markTime);
  connect(&m_markTime, &QTimer::timeout, this, [this] {
    m_marked.clear();
    viewport()->update();
  });
  setModel(m_records);
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(true);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setSectionsMovable(true);
  horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(horizontalHeader(), &QWidget::customContextMenuRequested, this,
          [this](const QPoint& place) { AskForColumns(horizontalHeader()->mapToGlobal(place)); });
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setSortIndicator(0, Qt::AscendingOrder);
  setSortingEnabled(true);
  setItemDelegate(new RecordCells(this));
  new SelectionTone(this);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this,
          [this](int column) { m_widthsChosen = m_widthsChosen || (!m_fitting && !Fills(column)); });
  FitRowHeight();
}

void RecordList::Show(SortedRecords records, Qt::SortOrder order, int typedColumn) {
  const QScopedValueRollback fitting(m_fitting, true);
  m_typedColumn = typedColumn;
  m_records->SetRecords(std::move(records), order);
  const QSignalBlocker alreadySorted(horizontalHeader());
  horizontalHeader()->setSortIndicator(m_records->SortColumn(), order);
  Restore({});
}

void RecordList::Refresh(SortedRecords records) {
  const Place place = Remember();
  const bool wasEmpty = m_records->TotalCount() == 0;
  const int wanted = m_records->SortColumn();
  m_records->SetRecords(std::move(records), m_records->SortOrder());
  if (wasEmpty && !m_widthsChosen) {
    SetColumnWidths({});
  }
  Restore(place);
  if (m_records->SortColumn() != wanted) {
    // Another column was chosen while the records were read.
    m_records->sort(wanted, m_records->SortOrder());
  }
}

void RecordList::Update(const QList<int>& ids, const RecordData& read) {
  const Place place = Remember();
  const bool wasEmpty = m_records->TotalCount() == 0;
  m_records->Update(ids, read);
  if (wasEmpty && !m_widthsChosen) {
    SetColumnWidths({});
  }
  Restore(place);
}

void RecordList::SetFilter(const QString& typed) {
  // A search without hits does not lose the place.
  if (m_records->rowCount() > 0) {
    m_place = Remember();
    m_place.currentShown = true;
  }
  m_records->SetFilter(typed);
  Restore(m_place);
}

QList<int> RecordList::SelectedIds() const {
  QList<int> ids = SelectedRows();
  for (int& row : ids) {
    row = m_records->IdAt(row);
  }
  return ids;
}

QList<int> RecordList::SelectedRows() const {
  QList<int> rows;
  const QItemSelection selection = selectionModel()->selection();
  for (const QItemSelectionRange& range : selection) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      rows.append(row);
    }
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

int RecordList::SelectedCount() const {
  int count = 0;
  const QItemSelection selection = selectionModel()->selection();
  for (const QItemSelectionRange& range : selection) {
    count += range.height();
  }
  return count;
}

bool RecordList::SelectRecord(int id) {
  return SelectRecords({id});
}

bool RecordList::SelectRecords(const QList<int>& ids) {
  for (const int id : ids) {
    const int row = m_records->RowOf(id);
    if (row >= 0) {
      Select(ids, row);
      scrollTo(m_records->index(row, FirstColumn()));
      return true;
    }
  }
  return false;
}

void RecordList::SetColumnWidths(const QList<int>& widths) {
  const QScopedValueRollback fitting(m_fitting, true);
  m_widthsChosen = !widths.isEmpty();
  const int widest = fontMetrics().averageCharWidth() * widestFittedColumn;
  const QList<int> shown = ShownColumns();
  const int last = shown.isEmpty() ? -1 : shown.last();
  // The last column fills the window; numbers would stand at its far end.
  const QVariant alignment = m_records->headerData(last, Qt::Horizontal, Qt::TextAlignmentRole);
  horizontalHeader()->setStretchLastSection((alignment.toInt() & Qt::AlignRight) == 0);
  for (const int column : shown) {
    const int fitted =
        std::min(std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)), widest);
    // What a column that fills the window happened to have in a wider one is not wanted back.
    const int wanted = Fills(column) ? 0 : widths.value(column);
    setColumnWidth(column, wanted > 0 ? wanted : fitted);
  }
}

bool RecordList::Fills(int column) const {
  const QList<int> shown = ShownColumns();
  return horizontalHeader()->stretchLastSection() && !shown.isEmpty() && column == shown.last();
}

QList<int> RecordList::ChosenWidths() const {
  QList<int> widths;
  for (int column = 0; m_widthsChosen && column < m_records->columnCount(); ++column) {
    widths.append(columnWidth(column));
  }
  return widths;
}

QList<int> RecordList::ShownColumns() const {
  QList<int> columns;
  for (int place = 0; place < m_records->columnCount(); ++place) {
    const int column = horizontalHeader()->logicalIndex(place);
    if (!isColumnHidden(column)) {
      columns.append(column);
    }
  }
  return columns;
}

QList<int> RecordList::ChosenColumns() const {
  const QList<int> shown = ShownColumns();
  QList<int> usual;
  for (int column = 0; column < m_records->columnCount(); ++column) {
    if (!IsOptional(column)) {
      usual.append(column);
    }
  }
  return shown == usual ? QList<int>() : shown;
}

bool RecordList::IsOptional(int column) const {
  return m_records->Columns()[column].IsOptional();
}

int RecordList::FirstColumn() const {
  return ShownColumns().value(0);
}

void RecordList::SetShownColumns(const QList<int>& columns) {
  const QScopedValueRollback fitting(m_fitting, true);
  QHeaderView& header = *horizontalHeader();
  QList<int> order = columns;
  for (int column = 0; column < m_records->columnCount(); ++column) {
    setColumnHidden(column, columns.isEmpty() ? IsOptional(column) : !columns.contains(column));
    if (!columns.contains(column)) {
      order.append(column);
    }
  }
  for (int place = 0; place < order.size(); ++place) {
    header.moveSection(header.visualIndex(order[place]), place);
  }
}

// One at least stays, and what comes back gets a width.
void RecordList::ShowColumn(int column, bool isShown) {
  QList<int> columns = ShownColumns();
  const QList<int> widths = ChosenWidths();
  if (isShown) {
    columns.append(column);
  } else if (columns.size() > 1) {
    columns.removeAll(column);
  }
  SetShownColumns(columns);
  SetColumnWidths(widths);
  Q_EMIT ShownColumnsChanged();
}

void RecordList::AskForColumns(const QPoint& place) {
  auto* menu = new QMenu(this);
  menu->setObjectName(u"mnuColumns"_s);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const QList<int> shown = ShownColumns();
  for (int column = 0; column < m_records->columnCount(); ++column) {
    const QString title = m_records->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().simplified();
    QAction* action = menu->addAction(title);
    action->setCheckable(true);
    action->setChecked(shown.contains(column));
    action->setEnabled(shown.size() > 1 || !action->isChecked());
    connect(action, &QAction::toggled, this, [this, column](bool isShown) { ShowColumn(column, isShown); });
  }
  menu->addSeparator();
  menu->addAction(u"&Como al principio"_s, this, [this] {
    SetShownColumns({});
    SetColumnWidths({});
    Q_EMIT ShownColumnsChanged();
  });
  menu->popup(place);
}

void RecordList::Copy(bool withHeadings) const {
  const QList<int> columns = ShownColumns();
  QStringList lines;
  const QList<int> rows = SelectedRows();
  for (const int row : rows) {
    lines.append(m_records->LineAt(row, columns));
  }
  if (withHeadings && !lines.isEmpty()) {
    lines.prepend(m_records->Headings(columns));
  }
  if (!lines.isEmpty()) {
    QApplication::clipboard()->setText(lines.join(u'\n'));
  }
}

void RecordList::SetEmptyText(const QString& text, QAction* way) {
  m_emptyText = text;
  m_wayAction = way;
  const bool isEmpty = m_records->rowCount() == 0;
  setAccessibleDescription(isEmpty ? text : QString());
  m_way->setText(way == nullptr ? QString() : way->text().section(u'\t', 0, 0).remove(u'&'));
  m_way->setVisible(isEmpty && way != nullptr);
  PlaceWay();
  viewport()->update();
}

QRect RecordList::EmptyTextPlace() const {
  const int margin = fontMetrics().height() * 2;
  return viewport()->rect().adjusted(margin, margin, -margin, -margin);
}

void RecordList::PlaceWay() {
  const QRect place = EmptyTextPlace();
  const int below = fontMetrics().boundingRect(place, Qt::AlignHCenter | Qt::TextWordWrap, m_emptyText).bottom();
  const QSize size = m_way->sizeHint();
  m_way->setGeometry((viewport()->width() - size.width()) / 2, below + fontMetrics().height(), size.width(),
                     size.height());
}

void RecordList::Mark(const QList<int>& ids) {
  m_marked.unite(QSet<int>(ids.begin(), ids.end()));
  m_markTime.start();
  viewport()->update();
}

bool RecordList::IsMarked(int row) const {
  return !m_marked.isEmpty() && m_marked.contains(m_records->IdAt(row));
}

RecordList::Place RecordList::Remember() const {
  Place place;
  place.selected = SelectedIds();
  if (currentIndex().isValid()) {
    place.currentRow = currentIndex().row();
    place.current = m_records->IdAt(place.currentRow);
    place.currentShown = viewport()->rect().intersects(visualRect(currentIndex()));
  }
  place.topRow = verticalScrollBar()->value();
  if (place.topRow < m_records->rowCount()) {
    place.top = m_records->IdAt(place.topRow);
  }
  return place;
}

void RecordList::Restore(const Place& place) {
  const int count = m_records->rowCount();
  if (count > 0) {
    const int found = m_records->RowOf(place.current);
    Select(place.selected, found >= 0 ? found : std::min(place.currentRow, count - 1));
  }
  executeDelayedItemsLayout();
  const int top = m_records->RowOf(place.top);
  verticalScrollBar()->setValue(top >= 0 ? top : place.topRow);
  if (currentIndex().isValid() && place.currentShown) {
    scrollTo(currentIndex());
  }
  Q_EMIT SelectedRecordsChanged();
}

// Selects the records, or where none of them is shown the one in `currentRow`.
void RecordList::Select(const QList<int>& ids, int currentRow) {
  const QSet<int> wanted(ids.begin(), ids.end());
  const int lastColumn = m_records->columnCount() - 1;
  QItemSelection selection;
  int first = -1;
  for (int row = 0; !ids.isEmpty() && row <= m_records->rowCount(); ++row) {
    const bool selected = row < m_records->rowCount() && wanted.contains(m_records->IdAt(row));
    if (selected && first < 0) {
      first = row;
    } else if (!selected && first >= 0) {
      selection.select(m_records->index(first, 0), m_records->index(row - 1, lastColumn));
      first = -1;
    }
  }
  if (selection.isEmpty()) {
    selection.select(m_records->index(currentRow, 0), m_records->index(currentRow, lastColumn));
  }
  selectionModel()->setCurrentIndex(m_records->index(currentRow, FirstColumn()), QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void RecordList::FitRowHeight() {
  verticalHeader()->setMinimumSectionSize(1);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 2);
}

QModelIndex RecordList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveHome || action == MoveEnd) {
    return m_records->index(action == MoveHome ? 0 : m_records->rowCount() - 1, std::max(currentIndex().column(), 0));
  }
  return QTableView::moveCursor(action, modifiers);
}

// One letter again and again goes from record to record that begins with it.
void RecordList::keyboardSearch(const QString& typed) {
  const bool anew = !m_typedAt.isValid() || m_typedAt.hasExpired(QApplication::keyboardInputInterval());
  m_typedAt.start();
  m_typed = anew ? typed : m_typed + typed;
  const int row = std::max(currentIndex().row(), 0);
  const bool repeated = m_typed.count(m_typed.front()) == m_typed.size();
  int found = m_records->Find(m_typed, m_typedColumn, anew ? row + 1 : row);
  if (found < 0 && repeated) {
    found = m_records->Find(typed, m_typedColumn, row + 1);
  }
  if (found >= 0) {
    SelectRecord(m_records->IdAt(found));
  }
}

void RecordList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentIndex().isValid()) {
    Q_EMIT RecordActivated();
    return;
  }
  QTableView::keyPressEvent(event);
}

void RecordList::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) {
    Q_EMIT RecordActivated();
    return;
  }
  QTableView::mouseDoubleClickEvent(event);
}

void RecordList::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (m_records->rowCount() > 0 || m_emptyText.isEmpty()) {
    return;
  }
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(EmptyTextPlace(), Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_emptyText);
}

void RecordList::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  PlaceWay();
}

void RecordList::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    FitRowHeight();
  }
}

void RecordList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  Q_EMIT SelectedRecordsChanged();
}

}  // namespace host
