#pragma once

#include "platform/automation/Error.h"

#include <QString>

class QWidget;

namespace host {

/// Shows an error as plain text: what could not be done, then what to do, or the error's own text where that says it.
/// Number, text and origin are folded, and can be copied.
void ShowError(QWidget* parent, const QString& title, const QString& what, const automation::Error& error);

/// The error as one text: what could not be done, the description, number and origin.
QString ErrorReport(const QString& what, const automation::Error& error);

}  // namespace host
