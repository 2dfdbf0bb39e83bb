#include "host/look/PlainLabel.h"

#include <algorithm>

namespace host {

namespace {

class WrappedLabel : public QLabel {
 public:
  using QLabel::QLabel;

  QSize minimumSizeHint() const override {
    constexpr int longestWord = 40;
    const QSize hint = QLabel::minimumSizeHint();
    return {std::min(hint.width(), longestWord * fontMetrics().averageCharWidth()), hint.height()};
  }
};

}  // namespace

QLabel* PlainLabel(const QString& text, QWidget* parent) {
  auto* label = new WrappedLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

QLabel* NamedLabel(const QString& name, QWidget* parent) {
  QLabel* label = PlainLabel({}, parent);
  label->setObjectName(name);
  return label;
}

}  // namespace host
