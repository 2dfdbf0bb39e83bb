#pragma once

#include <QScrollArea>

namespace host {

/// Fields below each other, as high as they wish; where the window is lower, or they are wider than half a screen, they
/// scroll.
class ScrolledColumn : public QScrollArea {
  Q_OBJECT

 public:
  /// The column owns its content, to which nothing is added afterwards.
  ScrolledColumn(QWidget* content, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  /// The wheel over a field that does not have the focus scrolls and changes nothing.
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace host
