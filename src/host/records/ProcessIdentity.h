#pragma once

#include <QString>

namespace host {

/// A process as the owner of record locks: the machine, the process number, and the start by which a later process
/// with the same number is told apart.
struct ProcessIdentity {
  QString machine;  ///< The machine's name, as users know it.
  int processId = 0;
  /// Opaque: the machine's identifier, the identifier of its last boot, the namespace of process numbers and the
  /// process's start; at most 40 characters. See /etc/machine-id, proc(5) and pid_namespaces(7).
  QString start;

  bool operator==(const ProcessIdentity&) const = default;
};

/// The running process. Read once for each process number, for a process may fork.
ProcessIdentity CurrentProcess();

/// True when `process` certainly runs no more: it ran on the machine of `here`, told by the machine's identifier, and
/// either the machine was booted since or no process with that number and start is left. False whenever that cannot be
/// known, as for a process of another machine or one that runs and may not be looked at.
bool HasEnded(const ProcessIdentity& process, const ProcessIdentity& here);

}  // namespace host
