#include "host/mailing/window/PeopleTable.h"

#include "host/look/SelectionTone.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>

namespace host {

PeopleTable::PeopleTable(QWidget* parent) : QTableView(parent), m_people(new PeopleModel(this)) {
  setModel(m_people);
  new SelectionTone(this);
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setAlternatingRowColors(true);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 3);
  constexpr int fewestRows = 4;
  setMinimumHeight(horizontalHeader()->sizeHint().height() + fewestRows * verticalHeader()->defaultSectionSize());
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setStretchLastSection(true);
  const int letter = fontMetrics().averageCharWidth();
  constexpr int nameLetters = 34;
  constexpr int postcodeLetters = 8;
  constexpr int townLetters = 22;
  // What is left for the last one, which takes it, may be less than its title.
  horizontalHeader()->setMinimumSectionSize(horizontalHeader()->sectionSizeHint(PeopleModel::Remark));
  setColumnWidth(PeopleModel::Name, letter * nameLetters);
  setColumnWidth(PeopleModel::Postcode, letter * postcodeLetters);
  setColumnWidth(PeopleModel::Town, letter * townLetters);
}

// Its layout gives it what others leave.
QSize PeopleTable::sizeHint() const {
  return {QTableView::sizeHint().width(), minimumHeight()};
}

void PeopleTable::GoTo(int person) {
  const QScopedValueRollback led(m_isLed, true);
  const int row = m_people->RowOf(person);
  if (row >= 0 && row != currentIndex().row()) {
    setCurrentIndex(m_people->index(row, PeopleModel::Name));
  }
}

void PeopleTable::SetEmptyText(const QString& text) {
  m_emptyText = text;
  setAccessibleDescription(m_people->rowCount() == 0 ? text : QString());
  viewport()->update();
}

void PeopleTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (current.isValid() && !m_isLed) {
    Q_EMIT Reached(m_people->PersonAt(current.row()));
  }
}

void PeopleTable::TickSelected() {
  const QModelIndexList rows = selectionModel()->selectedRows(PeopleModel::Name);
  if (rows.isEmpty()) {
    return;
  }
  const bool ticked = rows.constFirst().data(Qt::CheckStateRole).toInt() == Qt::Checked;
  QList<int> people;
  for (const QModelIndex& row : rows) {
    people.append(m_people->PersonAt(row.row()));
  }
  for (const int person : people) {
    Q_EMIT m_people->Ticked(person, !ticked);
  }
}

void PeopleTable::keyPressEvent(QKeyEvent* event) {
  const bool typing = m_typedAt.isValid() && m_typedAt.elapsed() < QApplication::keyboardInputInterval();
  if (event->key() == Qt::Key_Space && !typing) {
    TickSelected();
    return;
  }
  QTableView::keyPressEvent(event);
}

// What is typed in one go is the beginning of a name.
void PeopleTable::keyboardSearch(const QString& typed) {
  const bool goesOn = m_typedAt.isValid() && m_typedAt.elapsed() < QApplication::keyboardInputInterval();
  m_typed = goesOn ? m_typed + typed : typed;
  m_typedAt.start();
  const int from = std::max(0, currentIndex().row()) + (goesOn ? 0 : 1);
  const int row = m_people->Find(m_typed, from);
  if (row >= 0) {
    setCurrentIndex(m_people->index(row, PeopleModel::Name));
  }
}

void PeopleTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (m_people->rowCount() == 0) {
    const int margin = fontMetrics().height();
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_emptyText);
  }
}

}  // namespace host
