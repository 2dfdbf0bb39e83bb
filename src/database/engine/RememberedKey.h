#pragma once

#include "database/engine/Rows.h"

#include <limits>
#include <utility>

namespace database {

/// One row with a key in it, for a question that the engine need not be asked.
class RememberedKey : public Rows {
 public:
  explicit RememberedKey(qint64 key) : m_key(key) {}

  bool Step() override { return std::exchange(m_isAhead, false); }
  QVariant Value(int /*position*/) const override {
    return m_key <= std::numeric_limits<int>::max() ? QVariant(static_cast<int>(m_key)) : QVariant(m_key);
  }

 private:
  qint64 m_key;
  bool m_isAhead = true;
};

}  // namespace database
