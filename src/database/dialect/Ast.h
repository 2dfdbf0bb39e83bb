#pragma once

#include "database/dialect/Token.h"

#include <memory>
#include <optional>
#include <vector>

/// The tree of a statement. Names and positions point into the statement's text.
namespace database {

struct Select;

enum class ExpressionKind {
  Literal,     ///< `token`
  Constant,    ///< `name` is TRUE, FALSE or NULL
  ColumnName,  ///< `qualifier`.`name`, the qualifier perhaps empty
  Negation,    ///< minus `operands[0]`
  Arithmetic,  ///< + - * / \ MOD
  Concatenation,
  Comparison,  ///< = <> < > <= >=
  Like,
  In,       ///< operands[0] in the others, or in `select`
  Between,  ///< operands[0] between operands[1] and operands[2]
  IsNull,
  And,
  Or,
  Not,
  Call,    ///< `name`(operands); `distinct`, `star`
  Query,   ///< (`select`) as a value
  Exists,  ///< EXISTS (`select`)
};

struct Expression {
  ExpressionKind kind = ExpressionKind::Literal;
  Token token;
  QStringView qualifier;
  QStringView name;  ///< Also the operator of Arithmetic and Comparison.
  bool negated = false;
  bool distinct = false;
  bool star = false;
  int depth = 1;  ///< Levels of the tree from here down, subqueries not counted.
  std::vector<std::unique_ptr<Expression>> operands;
  std::unique_ptr<Select> select;

  /// A literal, perhaps with signs in front; no token for anything else.
  struct SignedLiteral {
    const Token* token = nullptr;
    bool negated = false;
  };
  SignedLiteral AsLiteral() const;
};

using ExpressionPtr = std::unique_ptr<Expression>;

/// One entry of a select list: an expression, `*` or `T.*`.
struct SelectItem {
  ExpressionPtr expression;  ///< Null for a star.
  QStringView starOf;        ///< The table of `T.*`.
  QStringView alias;
};

/// A table of a FROM clause, or a join of two of them.
struct TableReference {
  QStringView name;
  QStringView alias;
  qsizetype position = 0;
  std::unique_ptr<TableReference> left;  ///< Set for a join; then `right` and `condition` are, too.
  std::unique_ptr<TableReference> right;
  QStringView join;  ///< INNER, LEFT or RIGHT
  ExpressionPtr condition;
};

struct OrderItem {
  ExpressionPtr expression;
  bool descending = false;
};

/// A SELECT, with what UNION joins to it.
struct Select {
  bool distinct = false;
  std::optional<Token> top;
  std::vector<SelectItem> items;
  std::vector<std::unique_ptr<TableReference>> from;
  ExpressionPtr where;
  TokenRange condition;  ///< Of `where`.
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;
  std::unique_ptr<Select> next;  ///< The select behind UNION.
  bool unionAll = false;         ///< How `next` is joined.
  std::vector<OrderItem> orderBy;
};

struct Assignment {
  QStringView column;
  ExpressionPtr value;
};

enum class StatementKind { Select, Insert, Update, Delete };

struct Statement {
  StatementKind kind = StatementKind::Select;
  std::unique_ptr<Select> select;  ///< The query, or the source of an INSERT.
  QStringView table;
  std::vector<QStringView> columns;              ///< Of an INSERT; empty for all.
  std::vector<std::vector<ExpressionPtr>> rows;  ///< VALUES of an INSERT.
  std::vector<Assignment> assignments;
  ExpressionPtr where;
  TokenRange condition;  ///< Of `where`.
  /// Some literals belong to the statement, not to its values: positions (ORDER BY 2), and what is in expressions that
  /// rows are grouped by, which others must equal.
  bool ownsLiterals = false;
};

}  // namespace database
