#pragma once

#include "support/TestHost.h"

#include <QTest>

namespace support {

/// The actions of a request, as a host writes them.
inline constexpr int agregar = 1;
inline constexpr int modificar = 2;
inline constexpr int nuevo = 4;

}  // namespace support

/// Everything that the driver was told happened, nothing else, and no error reached the host.
#define EXPECT_CLEAN(host, outcome)                                     \
  do {                                                                  \
    const auto result = (outcome);                                      \
    QVERIFY2(!result, result ? qPrintable(result->Description()) : ""); \
    QCOMPARE((host).driver.TakeProblems(), QStringList());              \
  } while (false)

/// The call failed with that number at the host, and the driver was used as foreseen.
#define EXPECT_ERROR(host, outcome, number)                \
  do {                                                     \
    const auto result = (outcome);                         \
    QVERIFY2(result.has_value(), "no error");              \
    QCOMPARE(result->Number(), number);                    \
    QCOMPARE((host).driver.TakeProblems(), QStringList()); \
  } while (false)
