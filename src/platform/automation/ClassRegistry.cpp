#include "platform/automation/ClassRegistry.h"

#include "platform/automation/ComponentLibrary.h"
#include "platform/automation/Error.h"
#include "platform/process/PrivateFiles.h"

#include <QDir>
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

QList<Entry> ReadEntries(const QString& path) {
  QList<Entry> entries;
  QFile file(path);
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

QStringList AllRegistryFiles() {
  QStringList files{RegistryFile()};
  if (!qEnvironmentVariableIsEmpty("KEL_CLASES")) {
    return files;
  }
  const QStringList folders = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, u"kel/clases.d"_s,
                                                        QStandardPaths::LocateDirectory);
  for (const QString& folder : folders) {
    const QFileInfoList found = QDir(folder).entryInfoList({u"*.ini"_s}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : found) {
      files.append(file.filePath());
    }
  }
  return files;
}

// The library of a class; empty when no file knows it.
QString RegisteredLibrary(const QString& progId) {
  for (const QString& file : AllRegistryFiles()) {
    RequireUnexposed(file);
    for (const Entry& entry : ReadEntries(file)) {
      if (entry.progId.compare(progId, Qt::CaseInsensitive) == 0) {
        return QDir::cleanPath(QFileInfo(file).absoluteDir().absoluteFilePath(entry.path));
      }
    }
  }
  return {};
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
  QList<Entry> entries = ReadEntries(RegistryFile());
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
  const QString path = RegisteredLibrary(progId);
  if (path.isEmpty()) {
    throw Error(CannotCreateObject,
                u"%1: la clase «%2» no está registrada en «%3» ni la trae ningún paquete instalado."_s.arg(
                    ErrorText(CannotCreateObject), progId, RegistryFile()));
  }
  std::unique_ptr<ComponentLibrary>& library = LoadedLibraries()[path];
  if (!library) {
    library = std::make_unique<ComponentLibrary>(path);
  }
  return library->CreateObject(progId);
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
