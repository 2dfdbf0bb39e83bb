#pragma once

#include <QString>

/// Files and folders that nobody but the user may read, whatever mask the process was started with.
namespace process {

/// Makes the folder, and what is missing above it, with mode 0700. A folder that exists stays as it is. False when
/// there is no such folder afterwards.
bool CreatePrivateFolder(const QString& path);

/// Makes an empty file with mode 0600. A file that exists stays as it is. False when there is no such file afterwards.
bool CreatePrivateFile(const QString& path);

/// Makes the folder as CreatePrivateFolder does, and closes one that exists to others. False for a link and for another
/// user's folder, which are neither followed nor changed.
bool TakePrivateFolder(const QString& path);

/// Makes the file as CreatePrivateFile does, its folder too, and closes one that exists to others. False for a link and
/// for another user's file, which are neither followed nor changed.
bool TakePrivateFile(const QString& path);

/// Whether the path is a folder of the user's, no link, in which nobody else may write.
bool IsOwnFolder(const QString& path);

/// Whether the mode of the file lets the group or all others read or write it; false for one that is not there.
bool IsOpenToOthers(const QString& path);

/// Whether the process may write the file, as things stand; the superuser may wherever the disk can be written.
bool MayWrite(const QString& path);

}  // namespace process
