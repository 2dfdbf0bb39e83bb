#pragma once

#include <QWidget>

namespace host {

/// The page that calibrates with the four lengths to be measured, on white paper in any theme.
class CalibrationPicture : public QWidget {
  Q_OBJECT

 public:
  explicit CalibrationPicture(QWidget* parent);

  void SetPrinter(const QString& printer);
  /// The length that is being typed stands out: 0 to 3 for A to D, -1 for none.
  void SetMarked(int length);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_printer;
  int m_marked = -1;
};

}  // namespace host
