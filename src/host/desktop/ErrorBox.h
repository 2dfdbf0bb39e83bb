#pragma once

#include "platform/automation/Error.h"

#include <QString>

class QWidget;

namespace host {

/// Shows an error with its number, text and origin, as plain text. `what` says what could not be done.
void ShowError(QWidget* parent, const QString& title, const QString& what, const automation::Error& error);

/// The error as one text: what could not be done, the description, number and origin.
QString ErrorReport(const QString& what, const automation::Error& error);

}  // namespace host
