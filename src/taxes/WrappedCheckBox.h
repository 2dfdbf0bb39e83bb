#pragma once

#include <QCheckBox>

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
  void paintEvent(QPaintEvent* event) override;

 private:
  QString Wrapped(int width) const;
};

}  // namespace taxes
