#include "host/records/ProcessIdentity.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QSysInfo>

#include <sys/types.h>

#include <cerrno>
#include <csignal>
#include <optional>

using namespace Qt::StringLiterals;

namespace host {
namespace {

enum StartPart { MachineId, BootId, PidNamespace, StartTime, StartParts };

QByteArray ContentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

// The start in clock ticks since the boot; empty for a zombie, which has ended and only waits for its parent. Nothing
// for a process that this user may not look at (see hidepid in proc(5)) or that is not there.
std::optional<QString> StartTimeOf(int processId) {
  const QByteArray stat = ContentOf(u"/proc/%1/stat"_s.arg(processId));
  // The program's name, in parentheses, may hold blanks and parentheses itself.
  const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
  constexpr int stateField = 0;
  constexpr int startField = 19;
  if (fields.size() <= startField) {
    return std::nullopt;
  }
  return fields[stateField] == "Z" || fields[stateField] == "X" ? QString() : QString::fromLatin1(fields[startField]);
}

// The kernel answers this for every process, whoever may look at it.
bool IsThere(int processId) {
  return processId <= 0 || kill(static_cast<pid_t>(processId), 0) == 0 || errno != ESRCH;
}

// The beginnings of the identifiers tell machines of one name, and boots of one machine, well enough apart, and all
// parts together stay within 40 characters.
QString Beginning(const QByteArray& identifier) {
  return QString::fromLatin1(identifier.left(8));
}

QString PidNamespaceId() {
  const QString target = QFile::symLinkTarget(u"/proc/self/ns/pid"_s);
  return target.section(u'[', 1).section(u']', 0, 0);
}

ProcessIdentity ReadCurrent(int processId) {
  ProcessIdentity current;
  current.machine = QSysInfo::machineHostName();
  current.processId = processId;
  const QStringList parts{Beginning(QSysInfo::machineUniqueId()),
                          Beginning(ContentOf(u"/proc/sys/kernel/random/boot_id"_s)), PidNamespaceId(),
                          StartTimeOf(current.processId).value_or(QString())};
  current.start = parts.join(u' ');
  return current;
}

}  // namespace

// A process keeps all of it, and is asked for it at every lock; a forked one has another number.
ProcessIdentity CurrentProcess() {
  thread_local ProcessIdentity current;
  const int processId = static_cast<int>(QCoreApplication::applicationPid());
  if (current.processId != processId) {
    current = ReadCurrent(processId);
  }
  return current;
}

bool HasEnded(const ProcessIdentity& process, const ProcessIdentity& here) {
  const QStringList parts = process.start.split(u' ');
  const QStringList own = here.start.split(u' ');
  if (parts.size() != StartParts || own.size() != StartParts) {
    return false;
  }
  // Names change and repeat; without an identifier a machine is known by its running boot only.
  if (parts[MachineId] != own[MachineId] || parts[BootId].isEmpty() || own[BootId].isEmpty()) {
    return false;
  }
  if (parts[BootId] != own[BootId]) {
    return !own[MachineId].isEmpty();
  }
  if (parts[PidNamespace] != own[PidNamespace] || parts[PidNamespace].isEmpty()) {
    return false;
  }
  if (!IsThere(process.processId)) {
    return true;
  }
  const std::optional<QString> start = StartTimeOf(process.processId);
  return start && !parts[StartTime].isEmpty() && *start != parts[StartTime];
}

}  // namespace host
