#include "host/moving/window/GridView.h"

#include "host/moving/window/ChoiceDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

GridView::GridView(const char* name, const QString& accessibleName, const QStringList& headings, QWidget* parent)
    : QTableView(parent), m_model(new GridModel(headings, this)) {
  setObjectName(QString::fromLatin1(name));
  setAccessibleName(accessibleName);
  setModel(m_model);
  setItemDelegate(new ChoiceDelegate(this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 7 / 4);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setMinimumHeight(fontMetrics().height() * 5);
  connect(m_model, &GridModel::modelReset, this, &GridView::Spread);
  connect(m_model, &GridModel::Chosen, this, &GridView::Chosen);
  connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
    if (index.flags() & Qt::ItemIsEditable) {
      edit(index);
    }
  });
}

void GridView::Show(int rows, GridModel::Ask cell) {
  const int row = CurrentRow();
  m_model->Show(rows, std::move(cell));
  if (rows > 0) {
    setCurrentIndex(m_model->index(qBound(0, row, rows - 1), 0));
  }
}

void GridView::SetWidths(const QList<int>& letters) {
  m_letters = letters;
  Spread();
}

// In a narrow view all columns give way, so that the last one, which is chosen in, is not out of sight;
// no heading is cut off for it.
void GridView::Spread() {
  constexpr int ofTheLast = 16;
  const int letters = std::accumulate(m_letters.begin(), m_letters.end(), ofTheLast);
  const int wanted = letters * fontMetrics().averageCharWidth();
  const int width = qMax(wanted / 2, qMin(wanted, viewport()->width()));
  for (int i = 0; i < m_model->columnCount(); ++i) {
    const int share = i < m_letters.size() ? m_letters[i] * width / letters : columnWidth(i);
    setColumnWidth(i, qMax(share, horizontalHeader()->sectionSizeHint(i)));
  }
}

void GridView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  Spread();
}

void GridView::OpenChoice(int row) {
  for (int column = 0; column < m_model->columnCount(); ++column) {
    const QModelIndex index = m_model->index(row, column);
    if (index.flags() & Qt::ItemIsEditable) {
      setCurrentIndex(index);
      edit(index);
      return;
    }
  }
}

void GridView::keyPressEvent(QKeyEvent* event) {
  const bool opens = event->key() == Qt::Key_F2 || event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                     event->key() == Qt::Key_Enter;
  if (opens && CurrentRow() >= 0 && state() != EditingState) {
    OpenChoice(CurrentRow());
  } else {
    QTableView::keyPressEvent(event);
  }
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (current.row() != previous.row() || !previous.isValid()) {
    Q_EMIT RowReached(current.row());
  }
}

}  // namespace host
