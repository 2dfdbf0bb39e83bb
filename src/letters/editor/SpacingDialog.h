#pragma once

#include "letters/editor/Formatting.h"

#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QFormLayout;

namespace letters {

/// Asks for the distance of a paragraph's lines and the room above and below it.
class SpacingDialog : public QDialog {
 public:
  SpacingDialog(const Spacing& initial, QWidget* parent);

  Spacing Chosen() const;

 private:
  QDoubleSpinBox* AddPoints(QFormLayout* rows, const QString& label, const QString& name, double points);

  QComboBox* m_lines;
  QDoubleSpinBox* m_before;
  QDoubleSpinBox* m_after;
};

}  // namespace letters
