#pragma once

#include <QString>

/// The application's help file, which F1 opens in every dialog.
namespace Ayuda {

void SetFile(const QString& path);
void Show();

}  // namespace Ayuda
