#pragma once

#include "moving/Source.h"

namespace moving {

/// Reads any file that KindOfFile knows; every table has columns with names.
void ReadFile(const QString& path, SourceListener& listener, const database::Stop& stop);

}  // namespace moving
