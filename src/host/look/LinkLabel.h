#pragma once

#include <QLabel>

namespace host {

/// A label whose text has links. Tab goes to a link at once, where a plain label would take the focus and show it
/// nowhere until the next Tab.
class LinkLabel : public QLabel {
 public:
  explicit LinkLabel(QWidget* parent = nullptr);

 protected:
  void focusInEvent(QFocusEvent* event) override;
};

}  // namespace host
