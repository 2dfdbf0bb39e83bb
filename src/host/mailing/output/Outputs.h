#pragma once

#include "host/mailing/output/PrintedWork.h"
#include "host/mailing/output/RunControl.h"

#include <functional>

namespace host {

/// Paints all parts into one PDF. False where the run was cancelled, and nothing is left. Raises 5 where the file can't
/// be written.
bool WritePdf(const PrintedWork& work, const QString& file, RunControl& control);

/// A PDF for each part in a folder, which is made where it is missing; names are the parts', made safe. The finished
/// ones stay after a cancellation or an error. Returns how many there are. Raises 5 where something can't be written,
/// with how many there are.
int WritePdfFiles(const PrintedWork& work, const QString& folder, RunControl& control);

/// The same for files whose contents `part` gives.
int WriteFiles(const PrintedWork& work, const QString& folder, const QString& suffix,
               const std::function<QByteArray(int part)>& part, RunControl& control);

}  // namespace host
