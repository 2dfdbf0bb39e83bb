#pragma once

#include <QString>

namespace host {

/// Calls every member of a host's class with the arguments that the component passes, and prints one line each: what is
/// missing, answers in the wrong type or does something else than the contract says. `library` is a component library
/// with the class; one whose name ends in "cListas" is taken for a list helper, any other for a services object.
/// The member's name is printed before its call, so that the last one printed is the one that never returned.
/// Nothing is shown on the screen; windows that a member opens are closed. A lock is asked for on a record that does
/// not exist. Returns whether nothing was wrong. Raises 429 when the object cannot be made. `argc` and `argv` are the
/// program's own.
bool VerifyServices(const QString& library, const QString& progId, int& argc, char** argv);

}  // namespace host
