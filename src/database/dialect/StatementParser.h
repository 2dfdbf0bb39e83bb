#pragma once

#include "database/dialect/ExpressionParser.h"

namespace database {

/// Reads one statement of the dialect: SELECT (with UNION), INSERT, UPDATE or DELETE, perhaps with a semicolon at
/// its end. Raises StatementRefused for any other statement and for a second one behind the semicolon, and
/// SyntaxError for what it cannot read.
class StatementParser : private ExpressionParser {
 public:
  explicit StatementParser(TokenReader& reader) : ExpressionParser(reader) {}

  Statement Parse();

 private:
  std::unique_ptr<Select> ParseSubquery() override;
  std::unique_ptr<Select> ParseSelect();
  std::unique_ptr<Select> ParseSimpleSelect();
  void ParseItems(Select& select);
  SelectItem ParseItem();
  std::unique_ptr<TableReference> ParseJoins();
  std::unique_ptr<TableReference> ParseTable();
  /// Null where there is none.
  ExpressionPtr ParseWhere(TokenRange& condition);
  void ParseOrder(Select& select);
  void ParseGroup(Select& select);
  void NoteLiterals(const Expression& expression);

  void ParseInsert();
  std::vector<ExpressionPtr> ParseRow();
  void ParseUpdate();
  void ParseDelete();
  void ParseEnd();

  Statement m_statement;
};

}  // namespace database
