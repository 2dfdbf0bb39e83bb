#pragma once

#include "documents/Export.h"

class QTextDocument;

namespace rtf {

/// Where a right or centred tab stop stands beyond the text's width (in twips), text that ends at the text's edge takes
/// its place on the screen and on paper; Qt would break the line. What is written keeps the stop, and an unchanged
/// document stays one. Paragraphs outside tables. Where something can be undone it joins the last step if that was a
/// block of changes, and is a step of its own otherwise; where nothing can, it is none, and nothing can be redone.
KELDOCUMENTOS_EXPORT void FitTabs(QTextDocument& document, int width);

}  // namespace rtf
