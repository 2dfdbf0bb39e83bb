#pragma once

#include <QMessageBox>
#include <QString>

namespace host {

/// Shows a message with one button in front of the active window and waits for it. The text is plain: what a
/// database or a user wrote is never taken as markup.
void ShowMessage(QMessageBox::Icon icon, const QString& text, const QString& title);

}  // namespace host
