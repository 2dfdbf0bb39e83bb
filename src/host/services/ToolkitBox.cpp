#include "host/services/ToolkitBox.h"

#include <QObject>

#include <algorithm>

namespace host {

bool IsBoxOfTheToolkit(const QObject& dialog) {
  constexpr const char* boxes[] = {"QMessageBox",   "QInputDialog",   "QFileDialog",      "QAbstractPrintDialog",
                                   "QColorDialog",  "QFontDialog",    "QPageSetupDialog", "QPrintPreviewDialog",
                                   "QErrorMessage", "QProgressDialog"};
  return std::ranges::any_of(boxes, [&](const char* box) { return dialog.inherits(box); });
}

}  // namespace host
