#pragma once

#include "documents/Export.h"

class QTextBlock;

namespace rtf {

/// Whether a paragraph of a document is a joint: an empty one directly before a table, or directly behind one with more
/// text behind it. Qt shows nothing of it; so it stands for nothing of the letter and is not written, but for the break
/// of a page or section that it may carry for what follows. Behind a nested table at the end of a cell it is the
/// cell's last paragraph, which a cell needs.
KELDOCUMENTOS_EXPORT bool IsJoint(const QTextBlock& block);

}  // namespace rtf
