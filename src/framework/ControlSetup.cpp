#include "framework/ControlSetup.h"

#include "framework/ComboSearch.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QToolButton>

#include <algorithm>

namespace framework {
namespace {

constexpr int commonCharacters = 34;
constexpr int commonRows = 10;
constexpr int longestText = 32767;

// The wheel over a list that does not have the focus scrolls the window under it, it does not change the choice.
class WheelGuard : public QObject {
 public:
  explicit WheelGuard(QComboBox* combo) : QObject(combo) {
    combo->setFocusPolicy(Qt::StrongFocus);
    combo->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
      event->ignore();
      return true;
    }
    return QObject::eventFilter(watched, event);
  }
};

// Enter presses the button that has the focus, a "…" one too, not the form's default one. A button that is pressed by
// its mnemonic takes the focus first, as one that is clicked: the box that was being edited has been left then.
class ButtonKeys : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        static_cast<QAbstractButton*>(watched)->click();
        return true;
      }
    } else if (event->type() == QEvent::Shortcut) {
      auto* button = static_cast<QAbstractButton*>(watched);
      if (button->focusPolicy() != Qt::NoFocus) {
        button->setFocus(Qt::ShortcutFocusReason);
      }
    }
    return QObject::eventFilter(watched, event);
  }
};

int CharactersOf(const QWidget& control, int atMost) {
  const QVariant wanted = control.property("Characters");
  return wanted.isValid() ? wanted.toInt() : std::min(atMost, commonCharacters);
}

// Without an alignment a layout centres what does not fill its cell.
bool KeepLeft(QLayout* layout, QWidget* control) {
  if (layout == nullptr) {
    return false;
  }
  if (layout->setAlignment(control, Qt::AlignLeft | Qt::AlignVCenter)) {
    return true;
  }
  for (int i = 0; i < layout->count(); ++i) {
    if (KeepLeft(layout->itemAt(i)->layout(), control)) {
      return true;
    }
  }
  return false;
}

void SizeBox(QWidget& box, int characters) {
  const int width = (characters + 2) * box.fontMetrics().horizontalAdvance(u'0');
  if (characters < commonCharacters) {
    box.setFixedWidth(width);
    KeepLeft(box.parentWidget()->layout(), &box);
  } else {
    box.setMinimumWidth(width);
  }
}

void SizeList(QComboBox& combo) {
  // A long item must not make the window wider than the screen.
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo.setMinimumContentsLength(CharactersOf(combo, commonCharacters));
}

void SizeGrid(QTableView& grid) {
  const int rowHeight = grid.verticalHeader()->defaultSectionSize();
  const QVariant rows = grid.property("Rows");
  const int frame = 2 * grid.frameWidth();
  grid.setMinimumWidth(grid.horizontalHeader()->length() + frame + grid.verticalScrollBar()->sizeHint().width());
  grid.setMinimumHeight((rows.isValid() ? rows.toInt() : commonRows) * rowHeight +
                        grid.horizontalHeader()->sizeHint().height() + frame);
}

}  // namespace

void PrepareControls(QWidget& form) {
  const QList<QTableView*> grids = form.findChildren<QTableView*>();
  for (QTableView* grid : grids) {
    // While there are no rows yet whose height changes.
    const int line = grid->fontMetrics().height();
    grid->verticalHeader()->setDefaultSectionSize(line + line / 2);
  }
  const QList<QComboBox*> combos = form.findChildren<QComboBox*>();
  for (QComboBox* combo : combos) {
    new WheelGuard(combo);
    new ComboSearch(combo);
  }
  const QList<QAbstractButton*> buttons = form.findChildren<QAbstractButton*>();
  for (QAbstractButton* button : buttons) {
    if (qobject_cast<QPushButton*>(button) != nullptr || qobject_cast<QToolButton*>(button) != nullptr) {
      button->installEventFilter(new ButtonKeys(button));
    }
  }
}

void SizeControls(QWidget& form) {
  const QList<QLineEdit*> boxes = form.findChildren<QLineEdit*>();
  for (QLineEdit* box : boxes) {
    if (qobject_cast<QComboBox*>(box->parentWidget()) == nullptr) {
      SizeBox(*box, CharactersOf(*box, box->maxLength() < longestText ? box->maxLength() : commonCharacters));
    }
  }
  const QList<QComboBox*> combos = form.findChildren<QComboBox*>();
  for (QComboBox* combo : combos) {
    SizeList(*combo);
  }
  const QList<QTableView*> grids = form.findChildren<QTableView*>();
  for (QTableView* grid : grids) {
    SizeGrid(*grid);
  }
}

void SetColumnCharacters(QTableView& grid, std::initializer_list<int> characters) {
  int column = 0;
  for (const int count : characters) {
    grid.setColumnWidth(column++, (count + 2) * grid.fontMetrics().averageCharWidth());
  }
  grid.horizontalHeader()->setStretchLastSection(true);
}

qint32 ItemData(const QComboBox* combo) {
  return combo->currentData(Qt::UserRole).toInt();
}

}  // namespace framework
