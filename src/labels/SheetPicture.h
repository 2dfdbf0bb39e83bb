#pragma once

#include "labels/SheetLayout.h"

#include <QWidget>

namespace labels {

/// A sheet of labels to scale on its paper, an A4. Labels that reach beyond the paper stand out.
class SheetPicture : public QWidget {
  Q_OBJECT

 public:
  explicit SheetPicture(QWidget* parent = nullptr);

  /// Nothing draws the bare paper.
  void Show(const std::optional<SheetMeasures>& sheet);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<SheetMeasures> m_sheet;
};

}  // namespace labels
