#pragma once

#include "database/Schema.h"

#include <optional>
#include <unordered_map>

namespace database {

/// The keys that the engine gave to the last new row of each table, as long as nothing else may have changed what a
/// question for the highest key is meant for.
class KeyMemory {
 public:
  void Remember(const Table& table, qint64 key) { m_keys[&table] = key; }
  void Forget(const Table& table) { m_keys.erase(&table); }
  void ForgetAll() { m_keys.clear(); }

  std::optional<qint64> Find(const Table& table) const;
  /// Gives the key and forgets it.
  std::optional<qint64> Take(const Table& table);

 private:
  std::unordered_map<const Table*, qint64> m_keys;
};

}  // namespace database
