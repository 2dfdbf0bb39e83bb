#pragma once

#include "documents/labels/Sheet.h"

#include <QWidget>

namespace labels {

/// A sheet of labels to scale on its paper. Labels that reach beyond the paper stand out.
class SheetPicture : public QWidget {
  Q_OBJECT

 public:
  explicit SheetPicture(QWidget* parent = nullptr);

  /// Nothing draws the bare paper.
  void Show(const std::optional<documents::Sheet>& sheet);

  const documents::Paper& Paper() const { return m_paper; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  documents::Paper m_paper = documents::UsualPaper();
  std::optional<documents::Sheet> m_sheet;
};

}  // namespace labels
