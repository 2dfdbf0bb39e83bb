#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

/// Class creation by ProgID ("KelAPI.cPrincipal"), without regard to case.
///
/// A class comes from the process, when the program registered it, or from a component library that a class registry
/// file names. Each line of such a file is `ProgID=path of the library`; a path that is not absolute counts from the
/// file's folder. The files, of which the first that knows the ProgID decides:
///   - the user's, `clases.ini` in the folder "Kel" of the user's configuration folder, the only one that is written;
///   - those of installed packages, `kel/clases.d/*.ini` in the system's data folders (XDG_DATA_DIRS), folder by
///     folder, by name.
/// The environment variable KEL_CLASES names one file that stands for all of them.
namespace automation {

using Creator = std::function<std::unique_ptr<QObject>()>;

/// Registers a class of this process; a second registration of the same ProgID replaces the first.
void RegisterClass(const QString& progId, Creator creator);
void UnregisterClass(const QString& progId);

/// Creates an object of the class. Raises 429, with a text that says why, when no such class is registered or
/// its library is missing, is no component, or refuses, and when others than the user could exchange a registry file or
/// the library: nothing of that is read or loaded.
std::unique_ptr<QObject> CreateObject(const QString& progId);

/// The path of the user's class registry file.
QString RegistryFile();

/// Writes `progIds` with the library's path into the user's class registry file, replacing what it said of them.
/// The file is replaced as a whole under a lock, so that another program never sees half of it. False when it
/// cannot be written.
bool AddToRegistryFile(const QStringList& progIds, const QString& libraryPath);
bool RemoveFromRegistryFile(const QStringList& progIds);

/// Lets go of the component libraries that say they can be unloaded; returns how many those were. What a library
/// handed out stays valid (see ComponentLibrary), and the next object of one of its classes takes it up again.
int UnloadUnusedLibraries();

}  // namespace automation
