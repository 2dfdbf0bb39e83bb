#pragma once

#include "database/dialect/ExpressionWriter.h"

namespace database {

/// Writes a statement of the dialect for an engine and makes its plan.
class StatementWriter : private ExpressionWriter {
 public:
  StatementWriter(const Schema& schema, QStringView statement) : ExpressionWriter(schema, statement) {}

  /// Once per object.
  Plan Write(const Statement& statement);

 private:
  /// A select list being written: its columns, and what they are stored into where it feeds an INSERT.
  struct Output {
    std::vector<ResultColumn> columns;
    std::vector<ValueType> types;
    std::vector<const Column*> targets;
  };

  Fragment WriteSubquery(const Select& select, const Scope& scope) override;
  QString WriteSelect(const Select& select, const Scope* outer, Output& output);
  QString WriteSimple(const Select& select, const Scope& scope, Output& output);
  QString WriteItems(const Select& select, const Scope& scope, Output& output);
  QString WriteStar(const Scope::Source& source, Output& output);
  QString AddColumn(const Fragment& fragment, QString label, Output& output);
  QString LabelOf(const SelectItem& item, std::size_t position) const;
  QString WriteTables(const Select& select, const Scope& scope);
  QString WriteTable(const TableReference& reference, const Scope& scope);
  QString WriteOrder(const Select& select, const Scope& scope, const Output& output);
  QString WriteOrderItem(const Expression& expression, const Scope& scope, const Output& output, bool isUnion);
  QString WriteGroup(const Select& select, const Scope& scope);
  QString WritePosition(const Token& literal) const;

  /// Takes the numbers from the parameters: an engine looks every number up among those before.
  void PutBindingsInOrder();

  void WriteInsert(const Statement& statement);
  QString WriteRow(const std::vector<ExpressionPtr>& row, const std::vector<const Column*>& columns,
                   const Scope& scope);
  void WriteUpdate(const Statement& statement);
  void WriteDelete(const Statement& statement);
  void AppendWhere(QString& sql, const ExpressionPtr& where, const Scope& scope);
};

/// The plan of a statement whose tokens were read already.
Plan Translate(const Schema& schema, QStringView statement, const std::vector<Token>& tokens);

}  // namespace database
