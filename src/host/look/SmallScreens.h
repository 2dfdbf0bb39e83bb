#pragma once

#include <QObject>

namespace host {

/// Windows that would be larger than their screen get its size when they appear; what they scroll, they scroll then.
class SmallScreens : public QObject {
 public:
  /// Watches the application while it lives.
  explicit SmallScreens(QObject* parent);

  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace host
