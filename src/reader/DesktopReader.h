#pragma once

#include "reader/Confinement.h"
#include "reader/FrameWriter.h"

namespace reader {

/// The tables of a desktop database file (.mdb, .accdb), by libmdb. False where the file is something else or its list
/// of tables can't be read; a table whose definition can't be read, or one that is elsewhere, has a frame that says so.
bool ReadDesktopFile(const MappedFile& file, FrameWriter& frames);

}  // namespace reader
