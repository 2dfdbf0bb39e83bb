#pragma once

#include <QSize>

class QDialog;

namespace framework {

/// Lets what a dialog shows scroll, where `wanted` is more than its screen has room for: all but the row with the
/// default button, which stays in sight below, at whatever depth of the layout it was. What receives the focus is
/// scrolled to. A dialog without a default button stays as it is.
///
/// For a dialog that is not shown yet. Returns the size that it is to have: one that scrolls is never larger than the
/// screen.
QSize FitToScreen(QDialog& dialog, QSize wanted);

}  // namespace framework
