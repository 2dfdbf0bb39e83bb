// The tour walks on a machine with a printer, whatever the machine has: its program is asked before Qt's library.

#include <QPrinterInfo>

QStringList QPrinterInfo::availablePrinterNames() {
  return {QStringLiteral("PDF")};
}
