#pragma once

#include "moving/CsvReader.h"
#include "moving/HeadedRows.h"

namespace moving {

/// What a person said about a file's form.
struct ReadWishes {
  QString sheet;  ///< The only sheet or table that is read, by its name or its number from 1; empty for all.
  ListForm list = {};
  Headings headings = {};

  bool operator==(const ReadWishes&) const = default;
};

/// Reads any file that KindOfFile knows; every table has columns with names. Raises 5, naming those that there are, for
/// a sheet that the file does not have, and for headings below a sheet's last row.
void ReadFile(const QString& path, const ReadWishes& wishes, SourceListener& listener, const database::Stop& stop);

}  // namespace moving
