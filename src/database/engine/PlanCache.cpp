#include "database/engine/PlanCache.h"

#include "database/dialect/StatementWriter.h"

namespace database {

namespace {

// More different statements than the whole program writes; beyond it something makes a new shape every time.
constexpr std::size_t mostPlans = 400;
// A longer statement has a list of values in it and hardly comes again with as many.
constexpr std::size_t mostLiterals = 2000;

std::u16string_view ViewOf(QStringView text) {
  return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace

std::shared_ptr<CachedPlan> PlanCache::Take(QStringView statement, const Lexer& lexer) {
  std::shared_ptr<CachedPlan> found = Find(statement, lexer);
  return found != nullptr ? found : Add(statement, lexer);
}

std::shared_ptr<CachedPlan> PlanCache::Find(QStringView statement, const Lexer& lexer) {
  const auto byShape = m_plans.find(std::u16string_view(lexer.Shape()));
  if (byShape == m_plans.end()) {
    return nullptr;
  }
  if (byShape->second != nullptr) {
    return byShape->second;
  }
  const auto byText = m_plans.find(ViewOf(statement));
  return byText == m_plans.end() ? nullptr : byText->second;
}

std::shared_ptr<CachedPlan> PlanCache::Add(QStringView statement, const Lexer& lexer) {
  auto made = std::make_shared<CachedPlan>();
  made->plan = Translate(m_target, Schema::Current(), statement, lexer.Tokens());
  if (lexer.Literals().size() > mostLiterals) {
    return made;
  }
  if (m_plans.size() >= mostPlans) {
    m_plans.clear();
  }
  if (made->plan.fitsShape) {
    m_plans.emplace(lexer.Shape(), made);
  } else {
    m_plans.emplace(lexer.Shape(), nullptr);
    m_plans.insert_or_assign(std::u16string(ViewOf(statement)), made);
  }
  return made;
}

}  // namespace database
