#pragma once

#include "platform/contract/ContractVersion.h"

#include <QObject>
#include <QString>

#include <memory>

/// What a component library exports (C linkage), and the library seen from its user.
namespace automation {

/// Creates objects of one class of a component library. It belongs to the library and lives as long as it.
class ClassFactory {
 public:
  virtual ~ClassFactory();
  virtual std::unique_ptr<QObject> CreateInstance() = 0;
};

/// Results of the exported functions.
enum LibraryResult : int {
  LibraryOk = 0,                           ///< done; for DllCanUnloadNow: nothing is in use
  LibraryFalse = 1,                        ///< DllCanUnloadNow: objects are alive
  LibraryClassNotAvailable = -2147221231,  ///< DllGetClassObject: no such class in this library (0x80040111)
  LibraryNoPlace = -2147467261,            ///< no place for the factory, or for the version (0x80004003)
  LibraryFailed = -2147467259,             ///< registration: the registry file cannot be written (0x80004005)
};

/// `int DllGetClassObject(const char* progId, automation::ClassFactory** factory)`: the factory of the class, with
/// the ProgID in UTF-8 and in any case. Without a ProgID there is no such class; after an error the factory is null.
using DllGetClassObjectFunction = int (*)(const char*, ClassFactory**);
/// `int DllCanUnloadNow()`
using DllCanUnloadNowFunction = int (*)();
/// `int DllRegisterServer()` and `int DllUnregisterServer()`: enter the library's classes in the user's class
/// registry file, or take them out.
using DllRegistrationFunction = int (*)();
/// `int DllGetContractVersion(int* major, int* minor)`: the version of the contract that the library keeps to. A
/// library without this function keeps to 1.0.
using DllGetContractVersionFunction = int (*)(int*, int*);

/// Raises 429, with a text that says what ends it, where others than the user could exchange a file that decides which
/// code runs (see process/Exposure.h).
void RequireUnexposed(const QString& path);

/// A component library loaded for use. Its code and data stay in memory until the program ends, also after Unload:
/// texts and values that it handed over may be literals of its own, and Qt keeps pointers to the types and converters
/// that its code has registered. Whoever loads a component library by other means must not unload it either.
class ComponentLibrary {
 public:
  /// Loads the library. Raises 429 with a text for the user when it is missing, is no component library, or keeps to a
  /// contract of another major version; of such a library nothing else is called. One that others could exchange is
  /// refused before anything of it is loaded.
  explicit ComponentLibrary(const QString& path);
  ComponentLibrary(const ComponentLibrary&) = delete;
  ComponentLibrary& operator=(const ComponentLibrary&) = delete;
  ~ComponentLibrary();

  /// Raises 429 when the library does not have the class.
  std::unique_ptr<QObject> CreateObject(const QString& progId) const;
  contract::Version Contract() const;
  bool CanUnloadNow() const;
  /// Ends the use of the library through this object.
  void Unload();
  /// False when the registry file could not be written.
  bool Register() const;
  bool Unregister() const;

 private:
  struct Private;
  std::unique_ptr<Private> m_private;
};

}  // namespace automation
