#pragma once

#include "documents/labels/Sheet.h"

#include <QString>

/// What the sheet dialog makes of its boxes.
namespace labels {

/// The texts of the boxes, in the order of the numbers.
using SheetBoxTexts = std::array<QString, documents::sheetNumberCount>;

/// The sheet that the texts of the boxes mean; nothing while one is missing or is no number. No error.
std::optional<documents::Sheet> ReadSheet(const SheetBoxTexts& texts);

/// Says in words whether the sheet fits its paper, and what is too much.
QString FitText(const std::optional<documents::Sheet>& sheet, const documents::Paper& paper);

}  // namespace labels
