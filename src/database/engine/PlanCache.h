#pragma once

#include "database/dialect/Lexer.h"
#include "database/dialect/Plan.h"
#include "database/dialect/Target.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace database {

/// What an engine keeps beside a plan, its prepared statements for example; each engine derives its own.
class PreparedForms {
 public:
  PreparedForms() = default;
  PreparedForms(const PreparedForms&) = delete;
  PreparedForms& operator=(const PreparedForms&) = delete;
  virtual ~PreparedForms() = default;
};

/// A statement's plan with what the engine keeps beside it, nothing at first.
struct CachedPlan {
  Plan plan;
  std::unique_ptr<PreparedForms> prepared;
};

/// From a statement's shape to its plan. Statements that differ only in their literals share one.
class PlanCache {
 public:
  /// `target` outlives the cache.
  explicit PlanCache(const Target& target) : m_target(target) {}

  /// The plan of a text that `lexer` has just read. Raises what translating raises.
  std::shared_ptr<CachedPlan> Take(QStringView statement, const Lexer& lexer);
  void Clear() { m_plans.clear(); }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>()(text); }
  };

  std::shared_ptr<CachedPlan> Find(QStringView statement, const Lexer& lexer);
  std::shared_ptr<CachedPlan> Add(QStringView statement, const Lexer& lexer);

  const Target& m_target;
  // A null entry is a shape whose statements are kept by their whole text.
  std::unordered_map<std::u16string, std::shared_ptr<CachedPlan>, Hash, std::equal_to<>> m_plans;
};

}  // namespace database
