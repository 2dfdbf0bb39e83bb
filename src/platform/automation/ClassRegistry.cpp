#include "platform/automation/ClassRegistry.h"

#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"
#include "platform/process/PrivateFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <map>

using namespace Qt::StringLiterals;

namespace automation {

namespace {

constexpr qint64 longestRegistryFile = 1048576;
constexpr int lockTimeoutMilliseconds = 5000;

// Keys are ProgIDs in lower case.
std::map<QString, Creator>& ProcessClasses() {
  static std::map<QString, Creator> classes;
  return classes;
}

// Libraries stay loaded, by path, until UnloadUnusedLibraries.
std::map<QString, std::unique_ptr<ComponentLibrary>>& LoadedLibraries() {
  static std::map<QString, std::unique_ptr<ComponentLibrary>> libraries;
  return libraries;
}

struct Entry {
  QString progId;
  QString path;
};

QList<Entry> ReadRegistryFile() {
  QList<Entry> entries;
  QFile file(RegistryFile());
  if (!file.open(QIODevice::ReadOnly)) {
    return entries;
  }
  const QList<QByteArray> lines = file.read(longestRegistryFile).split('\n');
  for (const QByteArray& line : lines) {
    const qsizetype equals = line.indexOf('=');
    if (equals > 0) {
      entries.append(
          {QString::fromUtf8(line.left(equals).trimmed()), QString::fromUtf8(line.mid(equals + 1).trimmed())});
    }
  }
  return entries;
}

bool WriteRegistryFile(const QList<Entry>& entries) {
  QSaveFile file(RegistryFile());
  // It decides which code a program loads.
  if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)) {
    return false;
  }
  for (const Entry& entry : entries) {
    file.write(entry.progId.toUtf8() + '=' + entry.path.toUtf8() + '\n');
  }
  return file.commit();
}

// Replaces the entries of `progIds` by ones that name `path`, or by none where it is empty.
bool ReplaceEntries(const QStringList& progIds, const QString& path) {
  if (!process::CreatePrivateFolder(QFileInfo(RegistryFile()).absolutePath())) {
    return false;
  }
  QLockFile lock(RegistryFile() + u".lock"_s);
  if (!lock.tryLock(lockTimeoutMilliseconds)) {
    return false;
  }
  const QList<Entry> before = ReadRegistryFile();
  QList<Entry> entries = before;
  entries.removeIf([&](const Entry& entry) { return progIds.contains(entry.progId, Qt::CaseInsensitive); });
  if (!path.isEmpty()) {
    for (const QString& progId : progIds) {
      entries.append({progId, path});
    }
  }
  return WriteRegistryFile(entries);
}

}  // namespace

void RegisterClass(const QString& progId, Creator creator) {
  ProcessClasses()[progId.toLower()] = std::move(creator);
}

void UnregisterClass(const QString& progId) {
  ProcessClasses().erase(progId.toLower());
}

std::unique_ptr<QObject> CreateObject(const QString& progId) {
  const auto found = ProcessClasses().find(progId.toLower());
  if (found != ProcessClasses().end()) {
    return found->second();
  }
  for (const Entry& entry : ReadRegistryFile()) {
    if (entry.progId.compare(progId, Qt::CaseInsensitive) == 0) {
      std::unique_ptr<ComponentLibrary>& library = LoadedLibraries()[entry.path];
      if (!library) {
        library = std::make_unique<ComponentLibrary>(entry.path);
      }
      return library->CreateObject(progId);
    }
  }
  throw Error(CannotCreateObject, u"%1: la clase «%2» no está registrada en «%3»."_s.arg(ErrorText(CannotCreateObject),
                                                                                         progId, RegistryFile()));
}

QString RegistryFile() {
  const QString chosen = qEnvironmentVariable("KEL_CLASES");
  if (!chosen.isEmpty()) {
    return chosen;
  }
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/Kel/clases.ini"_s;
}

bool AddToRegistryFile(const QStringList& progIds, const QString& libraryPath) {
  return ReplaceEntries(progIds, libraryPath);
}

bool RemoveFromRegistryFile(const QStringList& progIds) {
  return ReplaceEntries(progIds, {});
}

int UnloadUnusedLibraries() {
  int unloaded = 0;
  for (auto entry = LoadedLibraries().begin(); entry != LoadedLibraries().end();) {
    if (entry->second && entry->second->CanUnloadNow()) {
      entry->second->Unload();
      entry = LoadedLibraries().erase(entry);
      ++unloaded;
    } else {
      ++entry;
    }
  }
  return unloaded;
}

}  // namespace automation
