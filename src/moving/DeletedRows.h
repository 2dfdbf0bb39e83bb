#pragma once

#include "moving/Survey.h"

namespace moving {

/// Marks rows of the file that are deleted there and that no row that comes in refers to.
void SkipDeletedRows(Survey& survey);

}  // namespace moving
