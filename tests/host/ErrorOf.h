#pragma once

#include "platform/automation/Error.h"

#include <functional>

/// The number of the runtime error that `action` raises, 0 for none.
inline int ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const automation::Error& error) {
    return error.Number();
  }
  return 0;
}
