#include "database/dialect/StatementWriter.h"

#include "database/Errors.h"
#include "database/dialect/Grouping.h"
#include "database/dialect/StatementParser.h"

#include <map>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr QStringView comma = u", ";

// The number that a column without a name gets in its label: Expr1000 for the first of a select list.
constexpr std::size_t firstUnnamed = 1000;

automation::Error WrongCount() {
  return automation::Error(adodb::SyntaxError,
                           u"Error de sintaxis en la instrucción SQL: el número de valores no es el "
                           "número de columnas."_s);
}

// A union of selects without duplicates whose order nobody asked for.
bool IsStreamableUnion(const Select& select) {
  if (select.next == nullptr || !select.orderBy.empty()) {
    return false;
  }
  for (const Select* part = &select; part->next != nullptr; part = part->next.get()) {
    if (part->unionAll) {
      return false;
    }
  }
  return true;
}

// A union whose order nobody asked for and that keeps all rows: those of each select in turn.
bool ShowsPartsInTurn(const Select& select) {
  if (!select.orderBy.empty()) {
    return false;
  }
  for (const Select* part = &select; part->next != nullptr; part = part->next.get()) {
    if (!part->unionAll) {
      return false;
    }
  }
  return true;
}

/// The bindings of a plan in the order of its text. Where they are shared, equal literals are one parameter, so that
/// equal expressions are equal to the engine, too.
class Parameters {
 public:
  Parameters(Plan& plan, const std::vector<Token>& tokens, bool areShared) : m_plan(plan), m_areShared(areShared) {
    for (const Token& token : tokens) {
      if (areShared && token.literal >= 0) {
        m_literals.push_back(token);
      }
    }
  }

  std::size_t NumberOf(const Binding& binding) {
    const std::size_t next = m_plan.bindings.size() + 1;
    if (m_areShared) {
      const Token& literal = m_literals[static_cast<std::size_t>(binding.literal)];
      const auto [known, isNew] = m_numbers.try_emplace(
          Key(literal.kind, literal.text, binding.negated, binding.conversion, binding.kind, binding.column), next);
      if (!isNew) {
        return known->second;
      }
    }
    m_plan.bindings.push_back(binding);
    return next;
  }

 private:
  using Key = std::tuple<TokenKind, QStringView, bool, Conversion, ParameterKind, const Column*>;

  Plan& m_plan;
  bool m_areShared;
  std::vector<Token> m_literals;
  std::map<Key, std::size_t> m_numbers;
};

}  // namespace

Plan StatementWriter::Write(const Statement& statement, const std::vector<Token>& tokens) {
  Plan plan;
  plan.fitsShape = !statement.ownsLiterals;
  plan.effect = EffectOf(m_schema, statement);
  plan.returnsRows = statement.kind == StatementKind::Select;
  switch (statement.kind) {
    case StatementKind::Select: {
      Output output;
      Finish(plan, tokens, WriteSelect(*statement.select, nullptr, output));
      plan.columns = std::move(output.columns);
      break;
    }
    case StatementKind::Insert:
      Finish(plan, tokens, WriteInsert(statement));
      break;
    case StatementKind::Update:
      Finish(plan, tokens, WriteUpdate(statement));
      break;
    case StatementKind::Delete:
      Finish(plan, tokens, WriteDelete(statement));
      break;
  }
  return plan;
}

void StatementWriter::Finish(Plan& plan, const std::vector<Token>& tokens, const SqlText& sql) const {
  constexpr qsizetype parameterLength = 2;
  Parameters parameters(plan, tokens, m_target.NumbersParameters() && !plan.fitsShape);
  QString text;
  text.reserve(sql.Text().size() + std::ssize(sql.Places()) * parameterLength);
  plan.bindings.reserve(sql.Places().size());
  qsizetype written = 0;
  for (const SqlText::Place& place : sql.Places()) {
    text += QStringView(sql.Text()).sliced(written, place.position - written);
    written = place.position;
    m_target.AppendParameter(text, parameters.NumberOf(place.binding), place.binding.kind);
  }
  text += QStringView(sql.Text()).sliced(written);
  plan.sql = text.toUtf8();
  plan.readTables = m_readTables;
}

Fragment StatementWriter::WriteSubquery(const Select& select, const Scope& scope) {
  Output output;
  Fragment fragment;
  fragment.sql = SqlText::Filled(u"(%1)", {WriteSelect(select, &scope, output)});
  fragment.type = output.types.front();
  return fragment;
}

SqlText StatementWriter::WriteSelect(const Select& select, const Scope* outer, Output& output) {
  Scope scope(m_schema, outer);
  for (const auto& reference : select.from) {
    scope.Add(*reference);
  }
  SqlText sql = select.next == nullptr ? WriteSimple(select, scope, output) : WriteUnion(select, scope, outer, output);
  sql += WriteOrder(select, scope, output, outer == nullptr);
  if (select.top) {
    if (select.next != nullptr) {
      throw SyntaxErrorAt(u"TOP no se admite con UNION"_s, m_statement, select.top->position);
    }
    sql += u" LIMIT ";
    sql += SqlText::Parameter({.literal = select.top->literal, .conversion = Conversion::Integer});
  }
  return sql;
}

SqlText StatementWriter::WriteUnion(const Select& select, const Scope& scope, const Scope* outer, Output& output) {
  const bool isInParts = outer == nullptr && !m_target.KeepsKeyOrder() && ShowsPartsInTurn(select);
  std::vector<SqlText> selects{WritePart(select, scope, output, isInParts)};
  SqlText sql = selects.front();
  for (const Select* part = &select; part->next != nullptr; part = part->next.get()) {
    selects.push_back(WriteJoined(*part->next, outer, output, isInParts));
    sql += part->unionAll ? u" UNION ALL " : u" UNION ";
    sql += selects.back();
  }
  return IsStreamableUnion(select) ? m_target.Union(selects) : sql;
}

SqlText StatementWriter::WritePart(const Select& select, const Scope& scope, Output& output, bool isOrdered) {
  SqlText sql = WriteSimple(select, scope, output);
  std::vector<SqlText> order;
  if (isOrdered) {
    AppendNaturalOrder(select, scope, output, order);
  }
  return order.empty() ? sql : SqlText::Filled(u"(%1 ORDER BY %2)", {sql, SqlText::Joined(order, u", ")});
}

// A select behind UNION, whose columns must fit those before.
SqlText StatementWriter::WriteJoined(const Select& select, const Scope* outer, Output& output, bool isOrdered) {
  Scope scope(m_schema, outer);
  for (const auto& reference : select.from) {
    scope.Add(*reference);
  }
  Output more;
  more.targets = output.targets;
  SqlText sql = WritePart(select, scope, more, isOrdered);
  if (more.columns.size() != output.columns.size()) {
    throw WrongCount();
  }
  for (std::size_t i = 0; i < more.types.size(); ++i) {
    output.types[i] = CommonType(output.types[i], more.types[i]);
    output.columns[i].isBoolean = output.types[i] == ValueType::Boolean;
  }
  return sql;
}

SqlText StatementWriter::WriteSimple(const Select& select, const Scope& scope, Output& output) {
  RequireGroupable(select, scope, m_statement);
  SqlText sql = select.distinct ? u"SELECT DISTINCT "_s : u"SELECT "_s;
  sql += WriteItems(select, scope, output);
  sql += WriteTables(select, scope);
  AppendWhere(sql, select.where, scope);
  sql += WriteGroup(select, scope, output);
  return sql;
}

SqlText StatementWriter::WriteItems(const Select& select, const Scope& scope, Output& output) {
  std::vector<SqlText> parts;
  for (const SelectItem& item : select.items) {
    if (item.expression != nullptr) {
      parts.push_back(AddColumn(WriteValue(*item.expression, scope), LabelOf(item, output.columns.size()), output));
    } else if (!item.starOf.isEmpty()) {
      WriteStar(scope.FindSource(item.starOf), output, parts);
    } else if (scope.Sources().empty()) {
      throw SyntaxErrorAt(u"falta FROM"_s, m_statement, m_statement.size());
    } else {
      for (const Scope::Source& source : scope.Sources()) {
        WriteStar(source, output, parts);
      }
    }
  }
  if (!output.targets.empty() && output.columns.size() != output.targets.size()) {
    throw WrongCount();
  }
  return SqlText::Joined(parts, comma);
}

void StatementWriter::WriteStar(const Scope::Source& source, Output& output, std::vector<SqlText>& parts) {
  for (const Column& column : source.table->columns) {
    parts.push_back(AddColumn(WriteColumn(source, column), column.name, output));
  }
}

SqlText StatementWriter::AddColumn(const Fragment& fragment, QString label, Output& output) {
  const std::size_t position = output.columns.size();
  output.columns.push_back({std::move(label), fragment.type == ValueType::Boolean});
  output.types.push_back(fragment.type);
  return position < output.targets.size() ? WriteStored(fragment, *output.targets[position]) : fragment.sql;
}

QString StatementWriter::LabelOf(const SelectItem& item, std::size_t position) const {
  if (!item.alias.isEmpty()) {
    return item.alias.toString();
  }
  if (item.expression->kind == ExpressionKind::ColumnName) {
    return item.expression->name.toString();
  }
  return u"Expr%1"_s.arg(firstUnnamed + position);
}

SqlText StatementWriter::WriteTables(const Select& select, const Scope& scope) {
  std::vector<SqlText> parts;
  for (const auto& reference : select.from) {
    parts.push_back(WriteTable(*reference, scope));
  }
  return parts.empty() ? SqlText() : SqlText::Filled(u" FROM %*", parts);
}

SqlText StatementWriter::WriteTable(const TableReference& reference, const Scope& scope) {
  if (reference.left == nullptr) {
    const Table& table = RequireTable(m_schema, reference.name);
    m_readTables.push_back(&table);
    const QString name = m_target.Name(table.name);
    return reference.alias.isEmpty() ? name : name + u" AS "_s + m_target.Name(reference.alias);
  }
  const SqlText left = WriteTable(*reference.left, scope);
  SqlText right = WriteTable(*reference.right, scope);
  if (reference.right->left != nullptr) {
    right = SqlText::Filled(u"(%1)", {right});
  }
  return SqlText::Filled(u"%1 %2 JOIN %3 ON %4",
                         {left, reference.join.toString(), right, WriteCondition(*reference.condition, scope)});
}

SqlText StatementWriter::WriteGroup(const Select& select, const Scope& scope, const Output& output) {
  SqlText sql;
  if (!select.groupBy.empty()) {
    std::vector<SqlText> parts;
    for (const ExpressionPtr& expression : select.groupBy) {
      parts.push_back(WriteGroupItem(*expression, scope, output));
    }
    sql += SqlText::Filled(u" GROUP BY %*", parts);
  }
  if (select.having != nullptr) {
    sql += SqlText::Filled(u" HAVING %1", {WriteCondition(*select.having, scope)});
  }
  return sql;
}

SqlText StatementWriter::WriteGroupItem(const Expression& expression, const Scope& scope, const Output& output) {
  return expression.kind == ExpressionKind::Literal ? SqlText(WritePosition(expression.token, output))
                                                    : WriteValue(expression, scope).sql;
}

QString StatementWriter::WritePosition(const Token& literal, const Output& output) const {
  const qulonglong position = literal.kind == TokenKind::Number ? literal.text.toULongLong() : 0;
  if (position == 0 || position > output.columns.size()) {
    throw SyntaxErrorAt(u"se esperaba una columna"_s, m_statement, literal.position);
  }
  return QString::number(position);
}

SqlText StatementWriter::WriteOrder(const Select& select, const Scope& scope, const Output& output, bool isOutermost) {
  std::vector<SqlText> parts;
  for (const OrderItem& item : select.orderBy) {
    const SqlText value = WriteOrderItem(*item.expression, scope, output, select.next != nullptr);
    parts.push_back(m_target.OrderItem(value, item.descending));
  }
  if (select.next != nullptr) {
    if (!parts.empty()) {
      AppendColumns(output, parts);
    }
  } else if (!m_target.KeepsKeyOrder() && (isOutermost || select.top)) {
    AppendNaturalOrder(select, scope, output, parts);
  }
  return parts.empty() ? SqlText() : SqlText::Filled(u" ORDER BY %*", parts);
}

void StatementWriter::AppendColumns(const Output& output, std::vector<SqlText>& parts) {
  for (std::size_t i = 0; i < output.columns.size(); ++i) {
    parts.push_back(m_target.OrderItem(QString::number(i + 1), false));
  }
}

// What an engine that reads rows as they lie must be asked for: every run shows them in the same order.
void StatementWriter::AppendNaturalOrder(const Select& select, const Scope& scope, const Output& output,
                                         std::vector<SqlText>& parts) {
  if (select.distinct) {
    AppendColumns(output, parts);
    return;
  }
  for (const ExpressionPtr& expression : select.groupBy) {
    parts.push_back(m_target.OrderItem(WriteGroupItem(*expression, scope, output), false));
  }
  if (!IsGrouped(select)) {
    for (const Scope::Source& source : scope.Sources()) {
      parts.push_back(m_target.OrderItem(WriteColumn(source, source.table->columns.front()).sql, false));
    }
  }
}

// A name that is an alias means the result's column; in a union every name does.
SqlText StatementWriter::WriteOrderItem(const Expression& expression, const Scope& scope, const Output& output,
                                        bool isUnion) {
  if (expression.kind == ExpressionKind::Literal) {
    return WritePosition(expression.token, output);
  }
  if (expression.kind == ExpressionKind::ColumnName && (isUnion || expression.qualifier.isEmpty())) {
    for (std::size_t i = 0; i < output.columns.size(); ++i) {
      if (expression.name.compare(output.columns[i].label, Qt::CaseInsensitive) == 0) {
        return QString::number(i + 1);
      }
    }
  }
  if (isUnion) {
    throw MissingColumn(expression.name);
  }
  return WriteValue(expression, scope).sql;
}

void StatementWriter::AppendWhere(SqlText& sql, const ExpressionPtr& where, const Scope& scope) {
  if (where != nullptr) {
    sql += u" WHERE ";
    sql += WriteCondition(*where, scope);
  }
}

SqlText StatementWriter::WriteInsert(const Statement& statement) {
  const Table& table = RequireTable(m_schema, statement.table);
  std::vector<const Column*> columns;
  for (const QStringView name : statement.columns) {
    columns.push_back(&RequireColumn(table, name));
  }
  if (columns.empty()) {
    for (const Column& column : table.columns) {
      columns.push_back(&column);
    }
  }
  std::vector<SqlText> names;
  for (const Column* column : columns) {
    names.emplace_back(m_target.Name(column->name));
  }
  SqlText sql = SqlText::Filled(u"INSERT INTO %1 (%2) ", {m_target.Name(table.name), SqlText::Joined(names, comma)});
  if (statement.select != nullptr) {
    Output output;
    output.targets = columns;
    sql += WriteSelect(*statement.select, nullptr, output);
    return sql;
  }
  const Scope scope(m_schema);
  std::vector<SqlText> rows;
  for (const auto& row : statement.rows) {
    rows.push_back(WriteRow(row, columns, scope));
  }
  sql += SqlText::Filled(u"VALUES %*", rows);
  return sql;
}

SqlText StatementWriter::WriteRow(const std::vector<ExpressionPtr>& row, const std::vector<const Column*>& columns,
                                  const Scope& scope) {
  if (row.size() != columns.size()) {
    throw WrongCount();
  }
  std::vector<SqlText> values;
  for (std::size_t i = 0; i < row.size(); ++i) {
    values.push_back(WriteStored(*row[i], *columns[i], scope));
  }
  return SqlText::Filled(u"(%*)", values);
}

SqlText StatementWriter::WriteUpdate(const Statement& statement) {
  const Table& table = RequireTable(m_schema, statement.table);
  Scope scope(m_schema);
  scope.Add(table);
  std::vector<SqlText> parts;
  for (const Assignment& assignment : statement.assignments) {
    const Column& column = RequireColumn(table, assignment.column);
    parts.push_back(
        SqlText::Filled(u"%1 = %2", {m_target.Name(column.name), WriteStored(*assignment.value, column, scope)}));
  }
  SqlText sql = SqlText::Filled(u"UPDATE %1 SET %2", {m_target.Name(table.name), SqlText::Joined(parts, comma)});
  AppendWhere(sql, statement.where, scope);
  return sql;
}

SqlText StatementWriter::WriteDelete(const Statement& statement) {
  const Table& table = RequireTable(m_schema, statement.table);
  Scope scope(m_schema);
  scope.Add(table);
  SqlText sql = SqlText::Filled(u"DELETE FROM %1", {m_target.Name(table.name)});
  AppendWhere(sql, statement.where, scope);
  return sql;
}

Plan Translate(const Target& target, const Schema& schema, QStringView statement, const std::vector<Token>& tokens) {
  TokenReader reader(tokens, statement);
  const Statement tree = StatementParser(reader).Parse();
  return StatementWriter(target, schema, statement).Write(tree, tokens);
}

}  // namespace database
