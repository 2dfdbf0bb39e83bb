#pragma once

#include "platform/automation/Error.h"

namespace support {

/// The number of the runtime error that `work` raises, 0 for none.
template <typename Work>
int ErrorOf(Work work) {
  try {
    work();
  } catch (const automation::Error& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace support
