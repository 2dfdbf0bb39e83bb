#pragma once

#include "support/TestGuard.h"

#include <QObject>

#include <functional>
#include <memory>

/// One test program holds the test classes of a folder; each is a test of its own: `program CLASS [options of Qt
/// Test]`. A test that needs a second process starts the program again as one of its helpers: `program --NAME
/// ARGUMENTS`.
namespace support {

using TestCreator = std::function<std::unique_ptr<QObject>()>;
/// What a helper process does with its arguments; its result is the exit code.
using Helper = std::function<int(const QStringList& arguments)>;

/// True, so that it can initialise a variable of namespace scope.
bool AddTest(const char* name, TestCreator create);
bool AddHelper(const char* name, Helper helper);

}  // namespace support

#define KEL_TEST(Class) \
  static const bool added##Class = support::AddTest(#Class, [] { return std::make_unique<support::Guarded<Class>>(); })

#define KEL_TEST_HELPER(name, function) static const bool added##name = support::AddHelper("--" #name, function)
