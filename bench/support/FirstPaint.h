#pragma once

#include "support/Stopwatch.h"

#include <QObject>

#include <functional>

class QDialog;

namespace bench {

/// Opens a modal dialog, whoever makes it, until it has been painted; then ends it. Works inside an application.
class FirstPaint : public QObject {
 public:
  /// How long it took from the call of `open`, which returns when the dialog has ended, to the painted dialog; what its
  /// end costs is not measured. `look` sees the painted dialog off the clock.
  static Elapsed Measure(const std::function<void()>& open, const std::function<void(QDialog&)>& look = {});

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Stop();

  Stopwatch m_stopwatch;
  QDialog* m_dialog = nullptr;
  Elapsed m_elapsed;
  std::function<void(QDialog&)> m_look;
};

}  // namespace bench
