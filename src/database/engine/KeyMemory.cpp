#include "database/engine/KeyMemory.h"

namespace database {

std::optional<qint64> KeyMemory::Find(const Table& table) const {
  const auto found = m_keys.find(&table);
  return found == m_keys.end() ? std::nullopt : std::optional(found->second);
}

std::optional<qint64> KeyMemory::Take(const Table& table) {
  const std::optional<qint64> key = Find(table);
  Forget(table);
  return key;
}

}  // namespace database
