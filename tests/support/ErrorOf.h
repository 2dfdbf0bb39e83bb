#pragma once

#include "platform/automation/Error.h"

namespace support {

/// The number of the runtime error that `action` raises, 0 for none.
template <typename Action>
int ErrorOf(Action action) {
  try {
    action();
  } catch (const automation::Error& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace support
