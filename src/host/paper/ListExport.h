#pragma once

#include "host/mailing/output/RunControl.h"
#include "host/paper/ListTable.h"

namespace host {

/// Writes the list into a file for other programs, by its ending: .ods, .csv or .pdf. It appears under its name when it
/// is whole, in the place of one that is there. For any thread; the control counts rows, or pages. False where the run
/// was cancelled, and nothing is left. Raises 5, in words, for another ending, where the file can't be written, and
/// where another program has it open.
bool ExportList(const ListTable& table, const QString& path, RunControl& control);

}  // namespace host
