#pragma once

#include "database/dialect/Ast.h"
#include "database/dialect/Fragment.h"
#include "database/dialect/Plan.h"
#include "database/dialect/Scope.h"
#include "database/dialect/Target.h"

namespace database {

/// Writes expressions of the dialect for a target: names resolved and quoted, literals lifted into parameters with the
/// conversion that their neighbour's type asks for, the Spanish collation kept on text expressions, Booleans -1 and 0.
/// Raises the errors of the names, and SyntaxError for an unknown function.
class ExpressionWriter {
 public:
  /// All arguments outlive the writer.
  ExpressionWriter(const Target& target, const Schema& schema, QStringView statement)
      : m_target(target), m_schema(schema), m_statement(statement) {}
  ExpressionWriter(const ExpressionWriter&) = delete;
  ExpressionWriter& operator=(const ExpressionWriter&) = delete;
  virtual ~ExpressionWriter() = default;

 protected:
  /// The select between parentheses, with the type of its first column.
  virtual Fragment WriteSubquery(const Select& select, const Scope& scope) = 0;

  /// As a condition.
  SqlText WriteCondition(const Expression& expression, const Scope& scope);
  /// As a value of the dialect.
  Fragment WriteValue(const Expression& expression, const Scope& scope);
  /// As what is stored into `column`.
  SqlText WriteStored(const Expression& expression, const Column& column, const Scope& scope);
  SqlText WriteStored(const Fragment& value, const Column& column) const;
  Fragment WriteColumn(const Scope::Source& source, const Column& column) const;

  const Target& m_target;
  const Schema& m_schema;
  QStringView m_statement;

 private:
  Fragment Write(const Expression& expression, const Scope& scope);
  ValueType TypeOf(const Expression& expression, const Scope& scope) const;
  ValueType TypeOfCall(const Expression& expression, const Scope& scope) const;
  Fragment WriteLiteral(const Expression& expression) const;
  Fragment WriteConstant(const Expression& expression) const;
  Fragment WriteNegation(const Expression& expression, const Scope& scope);
  Fragment WriteArithmetic(const Expression& expression, const Scope& scope);
  Fragment WriteConcatenation(const Expression& expression, const Scope& scope);
  Fragment WriteComparison(const Expression& expression, const Scope& scope);
  Fragment WriteLike(const Expression& expression, const Scope& scope);
  Fragment WriteIn(const Expression& expression, const Scope& scope);
  Fragment WriteBetween(const Expression& expression, const Scope& scope);
  Fragment WriteCall(const Expression& expression, const Scope& scope);
  Fragment WriteChain(const Expression& expression, QStringView word, const Scope& scope);
  std::vector<Fragment> WriteArguments(const Function& function, const Expression& call, const Scope& scope);
  Fragment FinishCall(const Function& function, const Expression& call, std::vector<Fragment> arguments) const;
  Fragment WriteNumber(const Expression& expression, const Scope& scope);
  SqlText WriteText(const Expression& expression, const Scope& scope, ParameterKind kind = ParameterKind::Text);
  Fragment WriteComparable(const Expression& expression, const Scope& scope);
  SqlText WriteCompared(const Expression& expression, const Fragment& other, const Scope& scope);
  Fragment TextExpression(const SqlText& sql) const;
  [[noreturn]] void FailCall(const Expression& call) const;
};

}  // namespace database
