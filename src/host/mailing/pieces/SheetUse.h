#pragma once

#include "documents/labels/LabelPainter.h"
#include "platform/adodb/Connection.h"

namespace host {

/// How the text of a sheet's labels looks: what was kept for the sheet, or what is usual.
documents::LabelFont ReadLabelFont(adodb::Connection& connection, int sheet);
/// Keeps it for the sheet.
void SaveLabelFont(adodb::Connection& connection, int sheet, const documents::LabelFont& font);

/// The label, from 1, behind the last one that came out well: 1 where nothing is known, and where that was the sheet's
/// last one.
int StartBehindLast(adodb::Connection& connection, int sheet);
/// Notes that a print came out well whose last sheet ended on `label`, and that this sheet was used last. False where
/// the sheet is gone, or no longer has such a label.
bool RememberLastLabel(adodb::Connection& connection, int sheet, int label);
/// The sheet that was used last; 0 for none.
int LastUsedSheet(adodb::Connection& connection);

}  // namespace host
