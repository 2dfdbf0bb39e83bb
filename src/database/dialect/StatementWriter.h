#pragma once

#include "database/dialect/ExpressionWriter.h"

namespace database {

/// Writes a statement of the dialect for a target and makes its plan.
class StatementWriter : private ExpressionWriter {
 public:
  using ExpressionWriter::ExpressionWriter;

  /// `tokens` are those of the statement's text.
  Plan Write(const Statement& statement, const std::vector<Token>& tokens);

 private:
  /// A select list being written: its columns, and what they are stored into where it feeds an INSERT.
  struct Output {
    std::vector<ResultColumn> columns;
    std::vector<ValueType> types;
    std::vector<const Column*> targets;
  };

  /// The pieces put together: the plan's text, and its bindings in the order of that text.
  void Finish(Plan& plan, const std::vector<Token>& tokens, const SqlText& sql) const;

  Fragment WriteSubquery(const Select& select, const Scope& scope) override;
  SqlText WriteSelect(const Select& select, const Scope* outer, Output& output);
  SqlText WriteUnion(const Select& select, const Scope& scope, const Scope* outer, Output& output);
  SqlText WriteJoined(const Select& select, const Scope* outer, Output& output, bool isOrdered);
  SqlText WritePart(const Select& select, const Scope& scope, Output& output, bool isOrdered);
  SqlText WriteSimple(const Select& select, const Scope& scope, Output& output);
  SqlText WriteItems(const Select& select, const Scope& scope, Output& output);
  void WriteStar(const Scope::Source& source, Output& output, std::vector<SqlText>& parts);
  SqlText AddColumn(const Fragment& fragment, QString label, Output& output);
  QString LabelOf(const SelectItem& item, std::size_t position) const;
  SqlText WriteTables(const Select& select, const Scope& scope);
  SqlText WriteTable(const TableReference& reference, const Scope& scope);
  SqlText WriteOrder(const Select& select, const Scope& scope, const Output& output, bool isOutermost);
  void AppendColumns(const Output& output, std::vector<SqlText>& parts);
  void AppendNaturalOrder(const Select& select, const Scope& scope, const Output& output, std::vector<SqlText>& parts);
  SqlText WriteOrderItem(const Expression& expression, const Scope& scope, const Output& output, bool isUnion);
  SqlText WriteGroupItem(const Expression& expression, const Scope& scope, const Output& output);
  SqlText WriteGroup(const Select& select, const Scope& scope, const Output& output);
  QString WritePosition(const Token& literal, const Output& output) const;

  SqlText WriteInsert(const Statement& statement);
  SqlText WriteRow(const std::vector<ExpressionPtr>& row, const std::vector<const Column*>& columns,
                   const Scope& scope);
  SqlText WriteUpdate(const Statement& statement);
  SqlText WriteDelete(const Statement& statement);
  void AppendWhere(SqlText& sql, const ExpressionPtr& where, const Scope& scope);

  std::vector<const Table*> m_readTables;
};

/// The plan of a statement whose tokens were read already.
Plan Translate(const Target& target, const Schema& schema, QStringView statement, const std::vector<Token>& tokens);

}  // namespace database
