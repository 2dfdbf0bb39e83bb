#include "framework/RecordLock.h"

#include <utility>

namespace framework {

bool RecordLock::Take(const HostServices& services, qint32 id) {
  bool held = false;
  const bool heldElsewhere = services.BloqueoRegistro(m_form, m_keyColumn, id, held);
  if (held) {
    m_held = id;
  }
  return !heldElsewhere;
}

void RecordLock::Release() {
  if (const std::optional<qint32> id = std::exchange(m_held, std::nullopt)) {
    HostServices::Fresh().DesbloqueoRegistro(m_form, m_keyColumn, *id);
  }
}

}  // namespace framework
