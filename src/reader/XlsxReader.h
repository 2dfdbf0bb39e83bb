#pragma once

#include "reader/FrameWriter.h"
#include "reader/ZipFile.h"

namespace reader {

/// The sheets of an Office Open XML workbook (ECMA-376). False where it is damaged, too large, or something else.
bool ReadXlsx(const ZipFile& file, FrameWriter& frames);

}  // namespace reader
