#pragma once

#include "moving/Source.h"

namespace moving {

/// Reads a list (RFC 4180; separators ; tab , |). UTF-8 with or without its mark, UTF-16 with one, else Windows-1252.
/// The separator is the one that gives the first rows the same number of fields. One table of the file's name. Raises
/// 5, naming the line, for a quote that is never closed, a NUL, or more columns than a table may have.
void ReadCsv(const QString& path, SourceListener& listener, const database::Stop& stop);

}  // namespace moving
