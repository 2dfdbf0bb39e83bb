#pragma once

#include <QString>

namespace host {

/// Enters the classes of a component library in the user's class registry file. Raises 429 for a library that is no
/// component, and where others could exchange the library or the file; 70 when the file cannot be written.
void RegisterComponent(const QString& library);

/// Takes the classes of a library out of the registry file; without a library, those of the configuration component,
/// so that one that was removed from the disk can be forgotten. Raises as RegisterComponent.
void UnregisterComponent(const QString& library);

}  // namespace host
