#include "entry/CPrincipal.h"
#include "entry/PublishedClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/contract/ContractVersion.h"

#include <QFileInfo>

#include <dlfcn.h>
#include <atomic>

namespace entry {
namespace {

std::atomic<int> liveObjects{0};

// Counts the objects of this library that a user still holds.
class Factory : public automation::ClassFactory {
 public:
  explicit Factory(const PublishedClass& published) : m_class(published) {}

  std::unique_ptr<QObject> CreateInstance() override {
    std::unique_ptr<QObject> object = m_class.create();
    ++liveObjects;
    QObject::connect(object.get(), &QObject::destroyed, [] { --liveObjects; });
    return object;
  }

  const PublishedClass& Class() const { return m_class; }

 private:
  const PublishedClass& m_class;
};

QStringList PublishedProgIds() {
  QStringList progIds;
  for (const PublishedClass& published : PublishedClasses()) {
    progIds.append(published.progId);
  }
  return progIds;
}

QString LibraryPath() {
  Dl_info info = {};
  return dladdr(reinterpret_cast<const void*>(&LibraryPath), &info) != 0
             ? QFileInfo(QFile::decodeName(info.dli_fname)).absoluteFilePath()
             : QString();
}

}  // namespace

extern "C" {

Q_DECL_EXPORT int DllGetClassObject(const char* progId, automation::ClassFactory** factory) {
  if (factory == nullptr) {
    return automation::LibraryNoPlace;
  }
  static std::vector<Factory> factories(PublishedClasses().begin(), PublishedClasses().end());
  for (Factory& candidate : factories) {
    if (candidate.Class().progId.compare(QString::fromUtf8(progId), Qt::CaseInsensitive) == 0) {
      *factory = &candidate;
      return automation::LibraryOk;
    }
  }
  *factory = nullptr;
  return automation::LibraryClassNotAvailable;
}

Q_DECL_EXPORT int DllCanUnloadNow() {
  return liveObjects == 0 ? automation::LibraryOk : automation::LibraryFalse;
}

Q_DECL_EXPORT int DllRegisterServer() {
  return automation::AddToRegistryFile(PublishedProgIds(), LibraryPath()) ? automation::LibraryOk
                                                                          : automation::LibraryFailed;
}

Q_DECL_EXPORT int DllUnregisterServer() {
  return automation::RemoveFromRegistryFile(PublishedProgIds()) ? automation::LibraryOk : automation::LibraryFailed;
}

Q_DECL_EXPORT int DllGetContractVersion(int* major, int* minor) {
  if (major == nullptr || minor == nullptr) {
    return automation::LibraryNoPlace;
  }
  *major = contract::current.major;
  *minor = contract::current.minor;
  return automation::LibraryOk;
}

}  // extern "C"

}  // namespace entry
