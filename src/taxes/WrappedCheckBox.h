#pragma once

#include <QCheckBox>
#include <QHash>

namespace taxes {

/// A check box whose text takes as many lines as its width asks for. The text itself holds no line breaks.
class WrappedCheckBox : public QCheckBox {
  Q_OBJECT

 public:
  explicit WrappedCheckBox(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QString Wrapped(int width) const;
  int MeasuredHeight(int width) const;

  // Layouts ask for the height a dozen times before the box is shown.
  mutable QHash<int, int> m_heights;  ///< By width.
  mutable QString m_measured;         ///< The text that they are for.
};

}  // namespace taxes
