#pragma once

#include "host/mailing/output/PrintedWork.h"

#include <QString>

namespace host {

/// The page on which a printer is measured: a cross in each corner, rulers, and what it is.
class CalibrationPage : public PrintedWork {
 public:
  explicit CalibrationPage(const QString& printer) : m_printer(printer) {}

  QString Title() const override;
  int Count() const override { return 1; }
  QString NameOf(int part) const override;
  void Paint(int part, PaintedPages& pages) const override;

  /// On a painter whose unit is the half-point and whose origin is the paper's upper left corner.
  void PaintOn(QPainter& painter) const;

 private:
  QString m_printer;
};

}  // namespace host
