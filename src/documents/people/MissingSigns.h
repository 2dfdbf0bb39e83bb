#pragma once

#include "documents/Export.h"

#include <QString>

namespace documents {

/// The signs of a text that no font of this machine has, each once: they are printed as empty boxes.
KELDOCUMENTOS_EXPORT QString SignsWithoutFont(const QString& text);

}  // namespace documents
