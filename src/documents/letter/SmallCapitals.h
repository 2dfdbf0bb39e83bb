#pragma once

#include "documents/Export.h"

class QTextDocument;

namespace documents {

/// Shows small capitals at four fifths of their font's size, as word processors do, where Qt alone paints them at a
/// size that has nothing to do with the font. Formats of the layout only: the document, its undo stack and what is
/// written of it stay. For the paragraphs between two places, as a change reports them, before they are laid out.
KELDOCUMENTOS_EXPORT void ShowSmallCapitals(QTextDocument& letter, int from, int length);

}  // namespace documents
