#include "host/look/PlainLabel.h"

namespace host {

QLabel* PlainLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
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
