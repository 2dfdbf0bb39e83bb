#pragma once

#include <QString>

#include <chrono>

namespace host {

/// What is looked at: a class in a component library, each call for that long at most.
struct Verified {
  QString library;
  QString progId;
  std::chrono::seconds limit;
};

/// Calls every member of a host's class with the arguments that the component passes, and prints one line each: what is
/// missing, answers in the wrong type or does something else than the contract says. A class whose name ends in
/// "cListas" is taken for a list helper, any other for a services object. A list helper is given the connection of the
/// services class of that name, where the library has it, with records in it that are rolled back, else one on a
/// database of reference data.
/// The member's name is printed before its call; one that does not return within the limit is told, and ends the
/// program with code 1. Nothing is shown on the screen; windows that a member opens are closed. A lock is asked for on
/// a record that does not exist. Returns whether nothing was wrong. Raises 429 when the object cannot be made. `argc`
/// and `argv` are the program's own.
bool VerifyServices(const Verified& verified, int& argc, char** argv);

/// Runs the component's statements on the connection of a services class, which must stand on empty tables of the
/// schema (see ConnectionChecks.h), and prints one line each, as above. Raises 91 for a class without a connection.
bool VerifyConnection(const Verified& verified, int& argc, char** argv);

}  // namespace host
