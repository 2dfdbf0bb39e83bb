#pragma once

#include <QLabel>

namespace host {

/// A line of plain text that ends in "…" where it does not fit; its tool tip says the whole then.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  bool Fits() const;
};

}  // namespace host
