#pragma once

#include <QString>

/// Who else decides what stands under a path.
namespace process {

/// Why any account of the machine may put something else in the place of what `path` names, a sentence in Spanish with
/// what ends it; empty where none may. Looked at are all folders on the way, through every link, and the file itself;
/// what is not there yet counts by the folders that are. A folder in which everybody may write is safe only as the
/// system's temporary one is: sticky, the user's or the superuser's, and so is what stands in it. The groups to which a
/// folder or file is open were chosen by somebody, and so was a folder that belongs to another user.
QString ExposureOf(const QString& path);

/// As one word of a shell's command.
QString ForShell(QString text);

}  // namespace process
