#pragma once

#include "moving/Source.h"

namespace moving {

/// How the text of a list is to be taken.
struct ListForm {
  QString encoding;  ///< "utf-8", "utf-16" or "windows-1252"; empty for what its bytes look like.
  QChar separator;   ///< Null for the one that fits its first rows.

  bool operator==(const ListForm&) const = default;
};

/// Reads a list (RFC 4180; separators ; tab , |). UTF-8 with or without its mark, UTF-16 with one, else Windows-1252.
/// The separator is the one that gives the first rows the same number of fields. One table of the file's name. Raises
/// 5, naming the line, for a quote that is never closed, a NUL, or more columns than a table may have.
void ReadCsv(const QString& path, const ListForm& form, SourceListener& listener, const database::Stop& stop);

}  // namespace moving
