#include "framework/ScreenFit.h"

#include <QApplication>
#include <QDialog>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace framework {

namespace {

// What a host may add at the top, a strip for example.
constexpr int linesAbove = 3;

class ScrolledContent : public QScrollArea {
 public:
  explicit ScrolledContent(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    // The tab order is the dialog's.
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
      if (now != nullptr && widget() != nullptr && widget()->isAncestorOf(now)) {
        ensureWidgetVisible(now);
      }
    });
  }
};

QSize RoomOnScreen(const QDialog& dialog) {
  return dialog.screen()->availableSize() -
         QSize(0, dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &dialog));
}

QLayout* RowOf(QLayout* layout, QWidget* button) {
  if (layout->indexOf(button) >= 0) {
    return layout;
  }
  for (int i = 0; i < layout->count(); ++i) {
    QLayout* inner = layout->itemAt(i)->layout();
    if (QLayout* row = inner != nullptr ? RowOf(inner, button) : nullptr) {
      return row;
    }
  }
  return nullptr;
}

QLayout* RowOfDefaultButton(const QDialog& dialog) {
  const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
  const auto found = std::find_if(buttons.cbegin(), buttons.cend(), [](QPushButton* b) { return b->isDefault(); });
  QLayout* row = found != buttons.cend() ? RowOf(dialog.layout(), *found) : nullptr;
  return row != dialog.layout() ? row : nullptr;
}

void TakeOut(QLayout* row) {
  static_cast<QLayout*>(row->parent())->removeItem(row);
  row->setParent(nullptr);
}

// All that the layout needs at that width, which its minimum says and its hint may not.
QSize NeededBy(const QLayout& layout, QSize wanted) {
  wanted = wanted.expandedTo(layout.totalMinimumSize());
  if (layout.hasHeightForWidth()) {
    wanted.setHeight(std::max(wanted.height(), layout.totalHeightForWidth(wanted.width())));
  }
  return wanted;
}

// The size with which the content needs no bar at the bottom, or has room for it.
QSize Scroll(QDialog& dialog, QLayout* row, QSize wanted, int room) {
  TakeOut(row);
  auto* area = new ScrolledContent(&dialog);
  auto* content = new QWidget(&dialog);
  // In the same window from the beginning, or the tab order would be lost. It takes the layout from the dialog, and all
  // that is in it.
  content->setLayout(dialog.layout());
  const QMargins margins = content->layout()->contentsMargins();
  content->layout()->setContentsMargins(0, 0, margins.right(), 0);
  area->setWidget(content);
  auto* outer = new QVBoxLayout(&dialog);
  outer->setContentsMargins(margins);
  outer->addWidget(area, 1);
  outer->addLayout(row);
  const int needed = margins.left() + content->minimumSizeHint().width() + margins.right();
  wanted.setWidth(std::max(wanted.width() + margins.right(), needed) + area->verticalScrollBar()->sizeHint().width());
  if (wanted.width() > room) {
    wanted.rheight() += area->horizontalScrollBar()->sizeHint().height();
  }
  return wanted;
}

}  // namespace

QSize FitToScreen(QDialog& dialog, QSize wanted) {
  QLayout* row = dialog.layout() != nullptr ? RowOfDefaultButton(dialog) : nullptr;
  if (row == nullptr) {
    return wanted;
  }
  const QSize room = RoomOnScreen(dialog);
  const QSize usual = room - QSize(0, linesAbove * dialog.fontMetrics().lineSpacing());
  wanted = NeededBy(*dialog.layout(), wanted);
  if (wanted.width() > usual.width() || wanted.height() > usual.height()) {
    wanted = Scroll(dialog, row, wanted, room.width());
  }
  return wanted.boundedTo(room);
}

}  // namespace framework
