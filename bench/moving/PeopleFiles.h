#pragma once

#include <QString>

namespace bench {

/// Invented people as files of other programs, made anew. What can't be written ends the program.

/// A desktop database with a table Colaboradores of eight columns.
void WriteDesktopPeople(const QString& path, int people);
/// A list of the same, separated by semicolons.
void WriteListOfPeople(const QString& path, int people);
/// A list with all eighteen columns of the table.
void WriteWideListOfPeople(const QString& path, int people);

}  // namespace bench
