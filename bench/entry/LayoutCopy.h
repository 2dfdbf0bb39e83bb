#pragma once

#include <QLayoutItem>
#include <QList>
#include <QMargins>

#include <memory>
#include <vector>

class QLayout;
class QWidget;

namespace bench {

/// A tree of boxes and grids with the places of a window's controls in it.
class LayoutCopy {
 public:
  /// `children` are the controls that the layout may hold, all of them of one parent.
  LayoutCopy(const QLayout& original, const QList<QWidget*>& children);

  /// Makes the layout; `made` stands for `children`, in their order. `parent` may be null for an inner layout.
  QLayout* Make(QWidget* parent, const QList<QWidget*>& made) const;

 private:
  struct Item {
    int child = -1;
    std::shared_ptr<const LayoutCopy> layout;
    std::shared_ptr<const QSpacerItem> spacer;
    Qt::Alignment alignment;
    int stretch = 0;
    int row = 0;
    int column = 0;
    int rows = 1;
    int columns = 1;
  };

  Item Read(QLayoutItem& original, const QList<QWidget*>& children) const;
  void Fill(class QBoxLayout& box, const QList<QWidget*>& made) const;
  void Fill(class QGridLayout& grid, const QList<QWidget*>& made) const;

  bool m_isGrid = false;
  int m_direction = 0;
  QMargins m_margins;
  int m_spacing = 0;
  int m_verticalSpacing = 0;
  QList<int> m_rowStretch;
  QList<int> m_columnStretch;
  std::vector<Item> m_items;
};

}  // namespace bench
