#include "database/dialect/StatementWriter.h"

#include "database/Errors.h"
#include "database/dialect/StatementParser.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace database {

namespace {

const QString comma = u", "_s;

// The number that a column without a name gets in its label: Expr1000 for the first of a select list.
constexpr std::size_t firstUnnamed = 1000;

automation::Error WrongCount() {
  return automation::Error(SyntaxError,
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

}  // namespace

Plan StatementWriter::Write(const Statement& statement) {
  m_plan.fitsShape = !statement.hasPositions;
  switch (statement.kind) {
    case StatementKind::Select: {
      Output output;
      m_plan.sql = WriteSelect(*statement.select, nullptr, output).toUtf8();
      m_plan.columns = std::move(output.columns);
      m_plan.returnsRows = true;
      break;
    }
    case StatementKind::Insert:
      WriteInsert(statement);
      break;
    case StatementKind::Update:
      WriteUpdate(statement);
      break;
    case StatementKind::Delete:
      WriteDelete(statement);
      break;
  }
  PutBindingsInOrder();
  return std::move(m_plan);
}

void StatementWriter::PutBindingsInOrder() {
  const QByteArray numbered = std::exchange(m_plan.sql, {});
  const std::vector<Binding> made = std::exchange(m_plan.bindings, {});
  m_plan.sql.resize(numbered.size());
  m_plan.bindings.reserve(made.size());
  char* written = m_plan.sql.data();
  bool insideName = false;
  for (auto at = numbered.cbegin(); at != numbered.cend(); ++at) {
    *written++ = *at;
    insideName = insideName != (*at == '"');
    if (*at != '?' || insideName) {
      continue;
    }
    std::size_t number = 0;
    for (; at + 1 != numbered.cend() && at[1] >= '0' && at[1] <= '9'; ++at) {
      number = number * 10 + static_cast<std::size_t>(at[1] - '0');
    }
    m_plan.bindings.push_back(made[number - 1]);
  }
  m_plan.sql.truncate(written - m_plan.sql.constData());
}

Fragment StatementWriter::WriteSubquery(const Select& select, const Scope& scope) {
  Output output;
  Fragment fragment;
  fragment.sql = u'(' + WriteSelect(select, &scope, output) + u')';
  fragment.type = output.types.front();
  return fragment;
}

QString StatementWriter::WriteSelect(const Select& select, const Scope* outer, Output& output) {
  Scope scope(m_schema, outer);
  for (const auto& reference : select.from) {
    scope.Add(*reference);
  }
  QString sql = WriteSimple(select, scope, output);
  for (const Select* part = &select; part->next != nullptr; part = part->next.get()) {
    Scope inner(m_schema, outer);
    for (const auto& reference : part->next->from) {
      inner.Add(*reference);
    }
    Output more;
    more.targets = output.targets;
    sql += part->unionAll || IsStreamableUnion(select) ? u" UNION ALL "_s : u" UNION "_s;
    sql += WriteSimple(*part->next, inner, more);
    if (more.columns.size() != output.columns.size()) {
      throw WrongCount();
    }
    for (std::size_t i = 0; i < more.types.size(); ++i) {
      output.types[i] = CommonType(output.types[i], more.types[i]);
      output.columns[i].isBoolean = output.types[i] == ValueType::Boolean;
    }
  }
  if (IsStreamableUnion(select)) {
    // The same rows, but the first one comes at once: a plain union would gather all of them before.
    sql = u"SELECT DISTINCT * FROM (%1)"_s.arg(sql);
  }
  sql += WriteOrder(select, scope, output);
  if (select.top) {
    if (select.next != nullptr) {
      throw SyntaxErrorAt(u"TOP no se admite con UNION"_s, m_statement, select.top->position);
    }
    sql += u" LIMIT "_s + Bind(*select.top, false, Conversion::Integer);
  }
  return sql;
}

QString StatementWriter::WriteSimple(const Select& select, const Scope& scope, Output& output) {
  QString sql = select.distinct ? u"SELECT DISTINCT "_s : u"SELECT "_s;
  sql += WriteItems(select, scope, output);
  sql += WriteTables(select, scope);
  AppendWhere(sql, select.where, scope);
  sql += WriteGroup(select, scope);
  return sql;
}

QString StatementWriter::WriteItems(const Select& select, const Scope& scope, Output& output) {
  QStringList parts;
  for (const SelectItem& item : select.items) {
    if (item.expression != nullptr) {
      parts += AddColumn(WriteValue(*item.expression, scope), LabelOf(item, output.columns.size()), output);
    } else if (!item.starOf.isEmpty()) {
      parts += WriteStar(scope.FindSource(item.starOf), output);
    } else if (scope.Sources().empty()) {
      throw SyntaxErrorAt(u"falta FROM"_s, m_statement, m_statement.size());
    } else {
      for (const Scope::Source& source : scope.Sources()) {
        parts += WriteStar(source, output);
      }
    }
  }
  if (!output.targets.empty() && output.columns.size() != output.targets.size()) {
    throw WrongCount();
  }
  return parts.join(comma);
}

QString StatementWriter::WriteStar(const Scope::Source& source, Output& output) {
  QStringList parts;
  for (const Column& column : source.table->columns) {
    Fragment fragment;
    fragment.sql = QuotedName(source.name) + u'.' + QuotedName(column.name);
    fragment.column = &column;
    fragment.type = ValueTypeOf(column.type);
    parts += AddColumn(fragment, column.name, output);
  }
  return parts.join(comma);
}

QString StatementWriter::AddColumn(const Fragment& fragment, QString label, Output& output) {
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

QString StatementWriter::WriteTables(const Select& select, const Scope& scope) {
  QStringList parts;
  for (const auto& reference : select.from) {
    parts += WriteTable(*reference, scope);
  }
  return parts.isEmpty() ? QString() : u" FROM "_s + parts.join(comma);
}

QString StatementWriter::WriteTable(const TableReference& reference, const Scope& scope) {
  if (reference.left == nullptr) {
    const QString name = QuotedName(RequireTable(m_schema, reference.name).name);
    return reference.alias.isEmpty() ? name : name + u" AS "_s + QuotedName(reference.alias);
  }
  const QString left = WriteTable(*reference.left, scope);
  QString right = WriteTable(*reference.right, scope);
  if (reference.right->left != nullptr) {
    right = u'(' + right + u')';
  }
  return u"%1 %2 JOIN %3 ON %4"_s.arg(left, reference.join, right, WriteCondition(*reference.condition, scope));
}

QString StatementWriter::WriteGroup(const Select& select, const Scope& scope) {
  QString sql;
  if (!select.groupBy.empty()) {
    QStringList parts;
    for (const ExpressionPtr& expression : select.groupBy) {
      parts += expression->kind == ExpressionKind::Literal ? WritePosition(expression->token)
                                                           : WriteValue(*expression, scope).sql;
    }
    sql += u" GROUP BY "_s + parts.join(comma);
  }
  if (select.having != nullptr) {
    sql += u" HAVING "_s + WriteCondition(*select.having, scope);
  }
  return sql;
}

QString StatementWriter::WritePosition(const Token& literal) const {
  bool isWhole = false;
  const int position = literal.text.toInt(&isWhole);
  if (literal.kind != TokenKind::Number || !isWhole) {
    throw SyntaxErrorAt(u"se esperaba una columna"_s, m_statement, literal.position);
  }
  return QString::number(position);
}

QString StatementWriter::WriteOrder(const Select& select, const Scope& scope, const Output& output) {
  QStringList parts;
  for (const OrderItem& item : select.orderBy) {
    parts += WriteOrderItem(*item.expression, scope, output, select.next != nullptr) +
             (item.descending ? u" DESC"_s : QString());
  }
  return parts.isEmpty() ? QString() : u" ORDER BY "_s + parts.join(comma);
}

// A name that is an alias means the result's column; in a union every name does.
QString StatementWriter::WriteOrderItem(const Expression& expression, const Scope& scope, const Output& output,
                                        bool isUnion) {
  if (expression.kind == ExpressionKind::Literal) {
    return WritePosition(expression.token);
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

void StatementWriter::AppendWhere(QString& sql, const ExpressionPtr& where, const Scope& scope) {
  if (where != nullptr) {
    sql += u" WHERE "_s + WriteCondition(*where, scope);
  }
}

void StatementWriter::WriteInsert(const Statement& statement) {
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
  QStringList names;
  for (const Column* column : columns) {
    names += QuotedName(column->name);
  }
  QString sql = u"INSERT INTO "_s + QuotedName(table.name) + u" ("_s + names.join(comma) + u") "_s;
  if (statement.select != nullptr) {
    Output output;
    output.targets = columns;
    sql += WriteSelect(*statement.select, nullptr, output);
  } else {
    const Scope scope(m_schema);
    QStringList rows;
    for (const auto& row : statement.rows) {
      rows += WriteRow(row, columns, scope);
    }
    sql += u"VALUES "_s + rows.join(comma);
  }
  m_plan.sql = sql.toUtf8();
}

QString StatementWriter::WriteRow(const std::vector<ExpressionPtr>& row, const std::vector<const Column*>& columns,
                                  const Scope& scope) {
  if (row.size() != columns.size()) {
    throw WrongCount();
  }
  QStringList values;
  for (std::size_t i = 0; i < row.size(); ++i) {
    values += WriteStored(*row[i], *columns[i], scope);
  }
  return u'(' + values.join(comma) + u')';
}

void StatementWriter::WriteUpdate(const Statement& statement) {
  const Table& table = RequireTable(m_schema, statement.table);
  Scope scope(m_schema);
  scope.Add(table);
  QStringList parts;
  for (const Assignment& assignment : statement.assignments) {
    const Column& column = RequireColumn(table, assignment.column);
    parts += QuotedName(column.name) + u" = "_s + WriteStored(*assignment.value, column, scope);
  }
  QString sql = u"UPDATE "_s + QuotedName(table.name) + u" SET "_s + parts.join(comma);
  AppendWhere(sql, statement.where, scope);
  m_plan.sql = sql.toUtf8();
}

void StatementWriter::WriteDelete(const Statement& statement) {
  const Table& table = RequireTable(m_schema, statement.table);
  Scope scope(m_schema);
  scope.Add(table);
  QString sql = u"DELETE FROM "_s + QuotedName(table.name);
  AppendWhere(sql, statement.where, scope);
  m_plan.sql = sql.toUtf8();
}

Plan Translate(const Schema& schema, QStringView statement, const std::vector<Token>& tokens) {
  TokenReader reader(tokens, statement);
  const Statement tree = StatementParser(reader).Parse();
  return StatementWriter(schema, statement).Write(tree);
}

}  // namespace database
