#pragma once

#include "database/dialect/Ast.h"
#include "database/dialect/Fragment.h"
#include "database/dialect/Functions.h"
#include "database/dialect/Plan.h"
#include "database/dialect/Scope.h"

namespace database {

/// `"name"`, quotes inside doubled.
QString QuotedName(QStringView name);

/// Writes expressions of the dialect for an engine: names resolved and quoted, literals lifted into the plan's
/// bindings with the conversion that their neighbour's type asks for, the Spanish collation kept on text
/// expressions, Booleans -1 and 0. Raises the errors of the names, and SyntaxError for an unknown function.
class ExpressionWriter {
 public:
  ExpressionWriter(const Schema& schema, QStringView statement) : m_schema(schema), m_statement(statement) {}
  ExpressionWriter(const ExpressionWriter&) = delete;
  ExpressionWriter& operator=(const ExpressionWriter&) = delete;
  virtual ~ExpressionWriter() = default;

 protected:
  /// The select between parentheses, with the type of its first column.
  virtual Fragment WriteSubquery(const Select& select, const Scope& scope) = 0;

  /// As a condition: the engine's truth value.
  QString WriteCondition(const Expression& expression, const Scope& scope);
  /// As a value of the dialect.
  Fragment WriteValue(const Expression& expression, const Scope& scope);
  /// As what is stored into `column`.
  QString WriteStored(const Expression& expression, const Column& column, const Scope& scope);
  QString WriteStored(const Fragment& value, const Column& column) const;
  /// A literal as a parameter: `?N` for the one that Plan::bindings has in the place N, from 1, so far.
  QString Bind(const Token& literal, bool negated, Conversion conversion, const Column* column = nullptr);

  const Schema& m_schema;
  QStringView m_statement;
  Plan m_plan;

 private:
  Fragment Write(const Expression& expression, const Scope& scope);
  ValueType TypeOf(const Expression& expression, const Scope& scope) const;
  ValueType TypeOfCall(const Expression& expression, const Scope& scope) const;
  Fragment WriteColumn(const Expression& expression, const Scope& scope);
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
  Fragment FinishCall(const Function& function, const Expression& call, std::vector<Fragment> arguments) const;
  Fragment WriteNumber(const Expression& expression, const Scope& scope);
  QString WriteText(const Expression& expression, const Scope& scope);
  QString WriteCompared(const Expression& expression, const Fragment& other, const Scope& scope);
  [[noreturn]] void FailCall(const Expression& call) const;
};

}  // namespace database
