#pragma once

#include "support/TestHost.h"
#include "support/TestProgram.h"

#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <QTest>

namespace support {

/// The numbers of a request, as a host writes them.
inline constexpr cConstNodo node;
inline constexpr cConstAccion action;

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
