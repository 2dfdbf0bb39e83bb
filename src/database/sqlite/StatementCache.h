#pragma once

#include "database/dialect/Lexer.h"
#include "database/dialect/Plan.h"
#include "database/sqlite/SqliteHandle.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace database {

/// A statement's plan and its prepared forms that are not in use.
struct CachedStatement {
  Plan plan;
  std::vector<SqliteStatement> idle;
};

/// The use of one prepared statement: nobody else gets it meanwhile, and it is reset and given back at the end.
class StatementLease {
 public:
  StatementLease() = default;
  StatementLease(std::shared_ptr<CachedStatement> owner, SqliteStatement statement)
      : m_owner(std::move(owner)), m_statement(std::move(statement)) {}
  StatementLease(StatementLease&&) = default;
  StatementLease& operator=(StatementLease&& other) noexcept;
  ~StatementLease() { Return(); }

  sqlite3_stmt* Statement() const { return m_statement.get(); }
  const Plan& ItsPlan() const { return m_owner->plan; }
  /// Resets the statement, so that it holds no lock, and gives it back.
  void Return();

 private:
  std::shared_ptr<CachedStatement> m_owner;
  SqliteStatement m_statement;
};

/// From a statement's shape to its prepared forms. Statements that differ only in their literals share one.
class StatementCache {
 public:
  /// A prepared statement for a text that `lexer` has just read. Raises what translating and preparing raise.
  StatementLease Take(const SqliteHandle& handle, QStringView statement, const Lexer& lexer);
  void Clear() { m_statements.clear(); }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>()(text); }
  };

  std::shared_ptr<CachedStatement> Find(QStringView statement, const Lexer& lexer);
  std::shared_ptr<CachedStatement> Add(QStringView statement, const Lexer& lexer);

  // A null entry is a shape whose statements are kept by their whole text.
  std::unordered_map<std::u16string, std::shared_ptr<CachedStatement>, Hash, std::equal_to<>> m_statements;
};

}  // namespace database
