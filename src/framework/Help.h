#pragma once

#include <QString>

/// The application's help file, which F1 opens in every dialog.
namespace framework::Help {

void SetFile(const QString& path);
void Show();

}  // namespace framework::Help
