#pragma once

#include "host/mailing/printing/PrintQueues.h"
#include "host/mailing/printing/Printing.h"

#include <functional>

namespace host {

/// The printers that a dialog offers and prints on.
struct Printers {
  std::function<QList<PrintQueue>()> queues;
  std::function<QList<PrintTray>(const QString& queue)> trays;
  /// Raises what Print raises.
  std::function<void(const PrintedWork&, const PrintWish&)> print;
};

/// This machine's.
Printers SystemPrinters();

}  // namespace host
