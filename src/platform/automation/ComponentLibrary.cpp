#include "platform/automation/ComponentLibrary.h"

#include "platform/automation/Error.h"
#include "platform/process/Exposure.h"

#include <QFileInfo>
#include <QLibrary>

using namespace Qt::StringLiterals;

namespace automation {

ClassFactory::~ClassFactory() = default;

struct ComponentLibrary::Private {
  QLibrary library;
  DllGetClassObjectFunction getClassObject = nullptr;
  DllCanUnloadNowFunction canUnloadNow = nullptr;
  DllRegistrationFunction registerServer = nullptr;
  DllRegistrationFunction unregisterServer = nullptr;
  DllGetContractVersionFunction getContractVersion = nullptr;

  template <typename Function>
  void Resolve(Function& function, const char* name) {
    function = reinterpret_cast<Function>(library.resolve(name));
  }
};

void RequireUnexposed(const QString& path) {
  const QString exposure = process::ExposureOf(path);
  if (!exposure.isEmpty()) {
    throw Error(CannotCreateObject, u"%1. %2"_s.arg(ErrorText(CannotCreateObject), exposure));
  }
}

ComponentLibrary::ComponentLibrary(const QString& path) : m_private(std::make_unique<Private>()) {
  if (!QFileInfo::exists(path)) {
    throw Error(CannotCreateObject,
                u"%1: no existe la biblioteca «%2». Vuelva a instalar o registrar el "
                "componente."_s.arg(ErrorText(CannotCreateObject), path));
  }
  RequireUnexposed(path);
  m_private->library.setFileName(path);
  m_private->library.setLoadHints(QLibrary::PreventUnloadHint);
  if (!m_private->library.load()) {
    throw Error(CannotCreateObject,
                u"%1: la biblioteca «%2» no se puede cargar (%3). Vuelva a instalar "
                "el componente."_s.arg(ErrorText(CannotCreateObject), path, m_private->library.errorString()));
  }
  m_private->Resolve(m_private->getClassObject, "DllGetClassObject");
  m_private->Resolve(m_private->canUnloadNow, "DllCanUnloadNow");
  m_private->Resolve(m_private->registerServer, "DllRegisterServer");
  m_private->Resolve(m_private->unregisterServer, "DllUnregisterServer");
  m_private->Resolve(m_private->getContractVersion, "DllGetContractVersion");
  if (m_private->getClassObject == nullptr || m_private->canUnloadNow == nullptr) {
    m_private->library.unload();
    throw Error(CannotCreateObject,
                u"%1: «%2» no es una biblioteca de componentes."_s.arg(ErrorText(CannotCreateObject), path));
  }
  if (const contract::Version version = Contract(); version.major != contract::current.major) {
    m_private->library.unload();
    throw Error(CannotCreateObject,
                u"%1: la biblioteca «%2» sigue la versión %3 del contrato y este programa, la %4. "
                "Instale el programa y el componente de una misma versión."_s.arg(
                    ErrorText(CannotCreateObject), path, version.Text(), contract::current.Text()));
  }
}

ComponentLibrary::~ComponentLibrary() = default;

std::unique_ptr<QObject> ComponentLibrary::CreateObject(const QString& progId) const {
  ClassFactory* factory = nullptr;
  if (m_private->getClassObject(progId.toUtf8().constData(), &factory) != LibraryOk || factory == nullptr) {
    throw Error(CannotCreateObject, u"%1: la biblioteca «%2» no contiene la clase «%3»."_s.arg(
                                        ErrorText(CannotCreateObject), m_private->library.fileName(), progId));
  }
  return factory->CreateInstance();
}

contract::Version ComponentLibrary::Contract() const {
  contract::Version version{1, 0};
  if (m_private->getContractVersion != nullptr) {
    m_private->getContractVersion(&version.major, &version.minor);
  }
  return version;
}

bool ComponentLibrary::CanUnloadNow() const {
  return m_private->canUnloadNow() == LibraryOk;
}

void ComponentLibrary::Unload() {
  m_private->library.unload();
}

bool ComponentLibrary::Register() const {
  return m_private->registerServer != nullptr && m_private->registerServer() == LibraryOk;
}

bool ComponentLibrary::Unregister() const {
  return m_private->unregisterServer != nullptr && m_private->unregisterServer() == LibraryOk;
}

}  // namespace automation
