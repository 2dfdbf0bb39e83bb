#pragma once

#include "documents/Export.h"

#include <QString>

namespace documents {

/// A stored value as text for paper: no control characters, nothing that stands for an object or turns the direction of
/// what follows it; every kind of line break is a line feed. Blanks at its ends are none.
KELDOCUMENTOS_EXPORT QString ValueText(const QString& stored);

}  // namespace documents
