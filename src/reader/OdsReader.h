#pragma once

#include "reader/FrameWriter.h"
#include "reader/ZipFile.h"

namespace reader {

/// The sheets of an OpenDocument spreadsheet. False where it is damaged, too large, or something else.
bool ReadOds(const ZipFile& file, FrameWriter& frames);

}  // namespace reader
