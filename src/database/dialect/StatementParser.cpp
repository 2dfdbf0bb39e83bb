#include "database/dialect/StatementParser.h"

#include "database/Errors.h"
#include "database/dialect/Grouping.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr int mostUnions = 500;
constexpr int mostTables = 60;

}  // namespace

Statement StatementParser::Parse() {
  if (m_reader.Peek().IsWord(u"SELECT")) {
    m_statement.select = ParseSelect();
  } else if (m_reader.TakeWord(u"INSERT")) {
    ParseInsert();
  } else if (m_reader.TakeWord(u"UPDATE")) {
    ParseUpdate();
  } else if (m_reader.TakeWord(u"DELETE")) {
    ParseDelete();
  } else if (m_reader.Peek().kind == TokenKind::End) {
    throw RefusedStatement(u"La instrucción SQL está vacía."_s);
  } else {
    throw RefusedStatement(
        u"Solo se admiten instrucciones SELECT, INSERT, UPDATE y DELETE; esta "
        "empieza por «%1»."_s.arg(m_reader.Peek().text.left(20)));
  }
  ParseEnd();
  return std::move(m_statement);
}

void StatementParser::ParseEnd() {
  const bool hadSemicolon = m_reader.TakeSymbol(u";");
  if (m_reader.Peek().kind == TokenKind::End) {
    return;
  }
  if (hadSemicolon) {
    throw RefusedStatement(
        u"Solo se admite una instrucción SQL cada vez; hay más texto detrás del "
        "punto y coma."_s);
  }
  m_reader.Fail(u"sobra texto"_s);
}

std::unique_ptr<Select> StatementParser::ParseSubquery() {
  const Level level(*this);
  return ParseSelect();
}

// The ORDER BY behind the last select of a union belongs to the whole; it is kept with the first.
std::unique_ptr<Select> StatementParser::ParseSelect() {
  std::unique_ptr<Select> first = ParseSimpleSelect();
  Select* last = first.get();
  for (int count = 1; m_reader.TakeWord(u"UNION"); ++count) {
    if (count == mostUnions) {
      m_reader.Fail(u"hay demasiadas consultas unidas"_s);
    }
    last->unionAll = m_reader.TakeWord(u"ALL");
    last->next = ParseSimpleSelect();
    last = last->next.get();
  }
  ParseOrder(*first);
  return first;
}

std::unique_ptr<Select> StatementParser::ParseSimpleSelect() {
  m_reader.ExpectWord(u"SELECT");
  auto select = std::make_unique<Select>();
  select->distinct = m_reader.TakeWord(u"DISTINCT") || m_reader.TakeWord(u"DISTINCTROW");
  if (!select->distinct) {
    m_reader.TakeWord(u"ALL");
  }
  if (m_reader.TakeWord(u"TOP")) {
    if (m_reader.Peek().kind != TokenKind::Number) {
      m_reader.Fail(u"se esperaba un número de filas"_s);
    }
    select->top = m_reader.Take();
  }
  ParseItems(*select);
  if (m_reader.TakeWord(u"FROM")) {
    do {
      select->from.push_back(ParseJoins());
    } while (m_reader.TakeSymbol(u","));
  }
  select->where = ParseWhere(select->condition);
  ParseGroup(*select);
  return select;
}

void StatementParser::ParseItems(Select& select) {
  do {
    select.items.push_back(ParseItem());
  } while (m_reader.TakeSymbol(u","));
}

SelectItem StatementParser::ParseItem() {
  SelectItem item;
  if (m_reader.TakeSymbol(u"*")) {
    return item;
  }
  if (m_reader.IsName() && m_reader.Peek(1).IsSymbol(u".") && m_reader.Peek(2).IsSymbol(u"*")) {
    item.starOf = m_reader.Take().text;
    m_reader.Take();
    m_reader.Take();
    return item;
  }
  item.expression = ParseExpression();
  if (m_reader.TakeWord(u"AS")) {
    item.alias = m_reader.ExpectName();
  }
  return item;
}

std::unique_ptr<TableReference> StatementParser::ParseJoins() {
  const Level level(*this);
  std::unique_ptr<TableReference> left = ParseTable();
  for (int count = 1;; ++count) {
    if (count == mostTables) {
      m_reader.Fail(u"hay demasiadas tablas"_s);
    }
    QStringView kind;
    if (m_reader.TakeWord(u"INNER")) {
      kind = u"INNER";
    } else if (m_reader.TakeWord(u"LEFT")) {
      kind = u"LEFT";
      m_reader.TakeWord(u"OUTER");
    } else if (m_reader.TakeWord(u"RIGHT")) {
      kind = u"RIGHT";
      m_reader.TakeWord(u"OUTER");
    } else if (m_reader.Peek().IsWord(u"JOIN")) {
      kind = u"INNER";
    } else {
      return left;
    }
    m_reader.ExpectWord(u"JOIN");
    auto join = std::make_unique<TableReference>();
    join->join = kind;
    join->left = std::move(left);
    join->right = ParseTable();
    m_reader.ExpectWord(u"ON");
    join->condition = ParseExpression();
    left = std::move(join);
  }
}

std::unique_ptr<TableReference> StatementParser::ParseTable() {
  if (m_reader.TakeSymbol(u"(")) {
    std::unique_ptr<TableReference> inner = ParseJoins();
    m_reader.ExpectSymbol(u")");
    return inner;
  }
  auto table = std::make_unique<TableReference>();
  table->position = m_reader.Peek().position;
  table->name = m_reader.ExpectName();
  if (m_reader.TakeWord(u"AS") || m_reader.IsName()) {
    table->alias = m_reader.ExpectName();
  }
  return table;
}

ExpressionPtr StatementParser::ParseWhere(TokenRange& condition) {
  if (!m_reader.TakeWord(u"WHERE")) {
    return nullptr;
  }
  condition.first = m_reader.Position();
  ExpressionPtr where = ParseExpression();
  condition.end = m_reader.Position();
  return where;
}

void StatementParser::ParseGroup(Select& select) {
  if (m_reader.TakeWord(u"GROUP")) {
    m_reader.ExpectWord(u"BY");
    do {
      select.groupBy.push_back(ParseExpression());
      NoteLiterals(*select.groupBy.back());
    } while (m_reader.TakeSymbol(u","));
  }
  if (m_reader.TakeWord(u"HAVING")) {
    select.having = ParseExpression();
  }
}

void StatementParser::ParseOrder(Select& select) {
  if (!m_reader.TakeWord(u"ORDER")) {
    return;
  }
  m_reader.ExpectWord(u"BY");
  do {
    OrderItem item;
    item.expression = ParseExpression();
    if (item.expression->kind == ExpressionKind::Literal || select.distinct || IsGrouped(select)) {
      NoteLiterals(*item.expression);
    }
    item.descending = m_reader.TakeWord(u"DESC");
    if (!item.descending) {
      m_reader.TakeWord(u"ASC");
    }
    select.orderBy.push_back(std::move(item));
  } while (m_reader.TakeSymbol(u","));
}

void StatementParser::NoteLiterals(const Expression& expression) {
  m_statement.ownsLiterals = m_statement.ownsLiterals || expression.kind == ExpressionKind::Literal;
  for (const ExpressionPtr& operand : expression.operands) {
    NoteLiterals(*operand);
  }
}

void StatementParser::ParseInsert() {
  m_statement.kind = StatementKind::Insert;
  m_reader.ExpectWord(u"INTO");
  m_statement.table = m_reader.ExpectName();
  if (m_reader.TakeSymbol(u"(")) {
    do {
      m_statement.columns.push_back(m_reader.ExpectName());
    } while (m_reader.TakeSymbol(u","));
    m_reader.ExpectSymbol(u")");
  }
  if (m_reader.Peek().IsWord(u"SELECT")) {
    m_statement.select = ParseSelect();
    return;
  }
  m_reader.ExpectWord(u"VALUES");
  do {
    m_statement.rows.push_back(ParseRow());
  } while (m_reader.TakeSymbol(u","));
}

std::vector<ExpressionPtr> StatementParser::ParseRow() {
  std::vector<ExpressionPtr> row;
  m_reader.ExpectSymbol(u"(");
  do {
    row.push_back(ParseExpression());
  } while (m_reader.TakeSymbol(u","));
  m_reader.ExpectSymbol(u")");
  return row;
}

void StatementParser::ParseUpdate() {
  m_statement.kind = StatementKind::Update;
  m_statement.table = m_reader.ExpectName();
  m_reader.ExpectWord(u"SET");
  do {
    Assignment assignment;
    assignment.column = m_reader.ExpectName();
    if (m_reader.TakeSymbol(u".")) {
      assignment.column = m_reader.ExpectName();
    }
    m_reader.ExpectSymbol(u"=");
    assignment.value = ParseExpression();
    m_statement.assignments.push_back(std::move(assignment));
  } while (m_reader.TakeSymbol(u","));
  m_statement.where = ParseWhere(m_statement.condition);
}

void StatementParser::ParseDelete() {
  m_statement.kind = StatementKind::Delete;
  m_reader.TakeSymbol(u"*");
  m_reader.ExpectWord(u"FROM");
  m_statement.table = m_reader.ExpectName();
  m_statement.where = ParseWhere(m_statement.condition);
}

}  // namespace database
