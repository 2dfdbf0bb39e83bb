#pragma once

#include "database/Schema.h"
#include "database/dialect/Ast.h"

#include <optional>

namespace database {

/// What a statement does to whole records, for those who remember new keys or tell others what changed. Tables are of
/// the schema; null where the statement has none of the kind.
struct Effect {
  enum class Kind { None, Inserts, Updates, Deletes };

  /// A number of the statement that is a key.
  struct GivenKey {
    int literal = 0;  ///< The how manieth literal, from 0.
    bool negated = false;
  };

  Kind kind = Kind::None;
  const Table* writtenTable = nullptr;
  /// The key of the only row that can be concerned: `WHERE key = n`, perhaps AND more; or the key that an INSERT of one
  /// row brings along.
  std::optional<GivenKey> givenKey;
  /// An INSERT of one row that leaves its key to the engine.
  bool makesKey = false;
  /// The table T of `SELECT MAX(key) FROM T`, perhaps with a WHERE, and nothing else.
  const Table* maximumOf = nullptr;
  /// Behind the WHERE of what is written or of the maximum; empty without one.
  TokenRange condition;
};

/// The tokens' part of the statement.
QStringView TextOf(TokenRange range, QStringView statement, const std::vector<Token>& tokens);

/// Raises NoSuchTable for a written table that the schema lacks.
Effect EffectOf(const Schema& schema, const Statement& statement);

}  // namespace database
