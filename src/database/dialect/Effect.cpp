#include "database/dialect/Effect.h"

#include "database/dialect/Scope.h"

namespace database {

namespace {

using GivenKey = std::optional<Effect::GivenKey>;

// The identifier of a table's rows, null for a table without one.
const Column* KeyOf(const Table& table) {
  const Column& first = table.columns.front();
  return first.type == ColumnType::Key ? &first : nullptr;
}

bool IsSame(QStringView name, QStringView other) {
  return name.compare(other, Qt::CaseInsensitive) == 0;
}

bool IsKey(const Expression& expression, const Table& table, QStringView alias) {
  const Column* key = KeyOf(table);
  return key != nullptr && expression.kind == ExpressionKind::ColumnName && IsSame(expression.name, key->name) &&
         (expression.qualifier.isEmpty() || IsSame(expression.qualifier, alias));
}

GivenKey NumberIn(const Expression& expression) {
  const Expression::SignedLiteral number = expression.AsLiteral();
  return number.token == nullptr ? GivenKey() : Effect::GivenKey{number.token->literal, number.negated};
}

// The literal that the condition compares the key with: every row that meets the condition has that key.
GivenKey KeyOfCondition(const Expression& condition, const Table& table) {
  if (condition.kind == ExpressionKind::And) {
    for (const ExpressionPtr& operand : condition.operands) {
      if (const GivenKey found = KeyOfCondition(*operand, table)) {
        return found;
      }
    }
  }
  if (condition.kind != ExpressionKind::Comparison || condition.name != u"=") {
    return {};
  }
  const Expression& first = *condition.operands[0];
  const Expression& second = *condition.operands[1];
  if (IsKey(first, table, table.name)) {
    return NumberIn(second);
  }
  return IsKey(second, table, table.name) ? NumberIn(first) : GivenKey();
}

// The place of the key among an INSERT's values, beyond them where it is not given.
std::size_t PlaceOfKey(const Statement& statement, const Column& key) {
  std::size_t place = 0;
  while (place < statement.columns.size() && !IsSame(statement.columns[place], key.name)) {
    ++place;
  }
  return statement.columns.empty() ? 0 : place;
}

void DescribeInsert(const Statement& statement, Effect& effect) {
  const Column* key = KeyOf(*effect.writtenTable);
  if (key == nullptr || statement.rows.size() != 1) {
    return;
  }
  const std::vector<ExpressionPtr>& row = statement.rows.front();
  const std::size_t place = PlaceOfKey(statement, *key);
  effect.makesKey = place >= row.size();
  if (!effect.makesKey) {
    effect.givenKey = NumberIn(*row[place]);
  }
}

const Table* MaximumOf(const Schema& schema, const Select& select) {
  const bool isPlain = select.next == nullptr && !select.top && !select.distinct && select.groupBy.empty() &&
                       select.having == nullptr && select.orderBy.empty() && select.items.size() == 1 &&
                       select.items.front().expression != nullptr && select.from.size() == 1 &&
                       select.from.front()->left == nullptr;
  if (!isPlain) {
    return nullptr;
  }
  const TableReference& source = *select.from.front();
  const Expression& item = *select.items.front().expression;
  const Table* table = schema.FindTable(source.name);
  const bool isMaximum = item.kind == ExpressionKind::Call && IsSame(item.name, u"MAX") && item.operands.size() == 1;
  const QStringView name = source.alias.isEmpty() ? source.name : source.alias;
  return table != nullptr && isMaximum && IsKey(*item.operands.front(), *table, name) ? table : nullptr;
}

}  // namespace

QStringView TextOf(TokenRange range, QStringView statement, const std::vector<Token>& tokens) {
  return range.IsEmpty()
             ? QStringView()
             : statement.sliced(tokens[range.first].position, tokens[range.end - 1].end - tokens[range.first].position);
}

Effect EffectOf(const Schema& schema, const Statement& statement) {
  Effect effect;
  if (statement.kind == StatementKind::Select) {
    effect.maximumOf = MaximumOf(schema, *statement.select);
    effect.condition = statement.select->condition;
    return effect;
  }
  effect.condition = statement.condition;
  effect.writtenTable = &RequireTable(schema, statement.table);
  if (statement.kind == StatementKind::Insert) {
    effect.kind = Effect::Kind::Inserts;
    DescribeInsert(statement, effect);
    return effect;
  }
  effect.kind = statement.kind == StatementKind::Update ? Effect::Kind::Updates : Effect::Kind::Deletes;
  if (statement.where != nullptr) {
    effect.givenKey = KeyOfCondition(*statement.where, *effect.writtenTable);
  }
  return effect;
}

}  // namespace database
