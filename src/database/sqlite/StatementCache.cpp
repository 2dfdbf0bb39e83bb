#include "database/sqlite/StatementCache.h"

#include "database/dialect/StatementWriter.h"

#include <sqlite3.h>

namespace database {

namespace {

// More different statements than the whole program writes; beyond it something makes a new shape every time.
constexpr std::size_t mostStatements = 400;
constexpr std::size_t mostIdle = 4;
// A longer statement has a list of values in it and hardly comes again with as many.
constexpr std::size_t mostLiterals = 2000;

std::u16string_view ViewOf(QStringView text) {
  return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace

StatementLease& StatementLease::operator=(StatementLease&& other) noexcept {
  Return();
  m_owner = std::move(other.m_owner);
  m_statement = std::move(other.m_statement);
  return *this;
}

void StatementLease::Return() {
  if (m_statement == nullptr) {
    return;
  }
  sqlite3_reset(m_statement.get());
  if (m_owner->idle.size() < mostIdle) {
    m_owner->idle.push_back(std::move(m_statement));
  }
  m_statement.reset();
}

StatementLease StatementCache::Take(const SqliteHandle& handle, QStringView statement, const Lexer& lexer) {
  std::shared_ptr<CachedStatement> found = Find(statement, lexer);
  if (found == nullptr) {
    found = Add(statement, lexer);
  }
  SqliteStatement prepared;
  if (found->idle.empty()) {
    prepared = handle.Prepare(found->plan.sql);
  } else {
    prepared = std::move(found->idle.back());
    found->idle.pop_back();
  }
  return {std::move(found), std::move(prepared)};
}

std::shared_ptr<CachedStatement> StatementCache::Find(QStringView statement, const Lexer& lexer) {
  const auto byShape = m_statements.find(std::u16string_view(lexer.Shape()));
  if (byShape == m_statements.end()) {
    return nullptr;
  }
  if (byShape->second != nullptr) {
    return byShape->second;
  }
  const auto byText = m_statements.find(ViewOf(statement));
  return byText == m_statements.end() ? nullptr : byText->second;
}

std::shared_ptr<CachedStatement> StatementCache::Add(QStringView statement, const Lexer& lexer) {
  auto made = std::make_shared<CachedStatement>();
  made->plan = Translate(Schema::Current(), statement, lexer.Tokens());
  if (lexer.Literals().size() > mostLiterals) {
    return made;
  }
  if (m_statements.size() >= mostStatements) {
    m_statements.clear();
  }
  if (made->plan.fitsShape) {
    m_statements.emplace(lexer.Shape(), made);
  } else {
    m_statements.emplace(lexer.Shape(), nullptr);
    m_statements.insert_or_assign(std::u16string(ViewOf(statement)), made);
  }
  return made;
}

}  // namespace database
