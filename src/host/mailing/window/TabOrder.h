#pragma once

#include <QWidget>

#include <initializer_list>

namespace host {

/// Tab goes through the fields in this order.
inline void InTabOrder(std::initializer_list<QWidget*> fields) {
  QWidget* before = nullptr;
  for (QWidget* field : fields) {
    if (before != nullptr) {
      QWidget::setTabOrder(before, field);
    }
    before = field;
  }
}

}  // namespace host
