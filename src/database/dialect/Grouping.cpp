#include "database/dialect/Grouping.h"

#include "database/Errors.h"
#include "database/dialect/Functions.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace database {

namespace {

bool IsAggregate(const Expression& expression) {
  if (expression.kind != ExpressionKind::Call) {
    return false;
  }
  const Function* function = FindFunction(expression.name, std::ssize(expression.operands));
  return expression.star || (function != nullptr && function->isAggregate);
}

/// One select, its names and the statement that they stand in.
class GroupingCheck {
 public:
  GroupingCheck(const Select& select, const Scope& scope, QStringView statement)
      : m_select(select), m_scope(scope), m_statement(statement) {}

  void Run() const {
    if (m_select.where != nullptr) {
      RefuseAggregates(*m_select.where);
    }
    for (const ExpressionPtr& expression : m_select.groupBy) {
      RefuseAggregates(*expression);
    }
    if (IsGrouped(m_select)) {
      RunOnGroups();
    }
    if (m_select.distinct && m_select.next == nullptr) {
      for (const OrderItem& item : m_select.orderBy) {
        RequireSelected(*item.expression);
      }
    }
  }

 private:
  void RunOnGroups() const {
    for (const SelectItem& item : m_select.items) {
      if (item.expression == nullptr) {
        throw SyntaxErrorAt(u"«*» no se admite con GROUP BY ni con funciones de agregado"_s, m_statement, 0);
      }
      Require(*item.expression);
    }
    if (m_select.having != nullptr) {
      Require(*m_select.having);
    }
    for (const OrderItem& item : m_select.orderBy) {
      if (m_select.next == nullptr && !NamesItem(*item.expression)) {
        Require(*item.expression);
      }
    }
  }

  void Require(const Expression& expression) const {
    if (IsGroupedBy(expression)) {
      return;
    }
    if (expression.kind == ExpressionKind::ColumnName && IsOwn(expression)) {
      throw SyntaxErrorAt(
          u"la columna «%1» no está en GROUP BY ni dentro de una función de agregado"_s.arg(expression.name),
          m_statement, expression.name.data() - m_statement.data());
    }
    for (const ExpressionPtr& operand : expression.operands) {
      if (IsAggregate(expression)) {
        RefuseAggregates(*operand);
      } else {
        Require(*operand);
      }
    }
  }

  void RequireSelected(const Expression& expression) const {
    const bool isSelected =
        NamesItem(expression) || std::any_of(m_select.items.begin(), m_select.items.end(), [&](const SelectItem& item) {
          return item.expression == nullptr || IsSame(*item.expression, expression);
        });
    if (!isSelected) {
      throw SyntaxErrorAt(u"con DISTINCT solo se ordena por lo que está en la lista"_s, m_statement, 0);
    }
  }

  void RefuseAggregates(const Expression& expression) const {
    if (HasAggregate(expression)) {
      throw SyntaxErrorAt(u"las funciones de agregado no se admiten en WHERE, en GROUP BY ni una dentro de otra"_s,
                          m_statement, 0);
    }
  }

  // A position, or a name of the result's.
  bool NamesItem(const Expression& expression) const {
    return expression.kind == ExpressionKind::Literal ||
           (expression.kind == ExpressionKind::ColumnName && expression.qualifier.isEmpty() &&
            std::any_of(m_select.items.begin(), m_select.items.end(), [&](const SelectItem& item) {
              return item.alias.compare(expression.name, Qt::CaseInsensitive) == 0;
            }));
  }

  // Columns of the selects around it have one value for each run.
  bool IsOwn(const Expression& column) const {
    const Scope::Source* source = m_scope.Resolve(column.qualifier, column.name).source;
    return std::any_of(m_scope.Sources().begin(), m_scope.Sources().end(),
                       [&](const Scope::Source& own) { return &own == source; });
  }

  bool IsGroupedBy(const Expression& expression) const {
    return std::any_of(m_select.groupBy.begin(), m_select.groupBy.end(), [&](const ExpressionPtr& group) {
      if (group->kind != ExpressionKind::Literal) {
        return IsSame(*group, expression);
      }
      const auto position = group->token.text.toULongLong();
      return position > 0 && position <= m_select.items.size() && m_select.items[position - 1].expression != nullptr &&
             IsSame(*m_select.items[position - 1].expression, expression);
    });
  }

  bool IsSame(const Expression& first, const Expression& second) const {
    if (&first == &second) {
      return true;
    }
    if (first.kind != second.kind || first.select != nullptr || second.select != nullptr) {
      return false;
    }
    if (first.kind == ExpressionKind::Literal) {
      return first.token.kind == second.token.kind && first.token.text == second.token.text;
    }
    if (first.kind == ExpressionKind::ColumnName) {
      const Scope::Found one = m_scope.Resolve(first.qualifier, first.name);
      const Scope::Found other = m_scope.Resolve(second.qualifier, second.name);
      return one.source == other.source && one.column == other.column;
    }
    return first.name.compare(second.name, Qt::CaseInsensitive) == 0 && first.negated == second.negated &&
           first.distinct == second.distinct && first.star == second.star &&
           std::equal(first.operands.begin(), first.operands.end(), second.operands.begin(), second.operands.end(),
                      [&](const ExpressionPtr& one, const ExpressionPtr& other) { return IsSame(*one, *other); });
  }

  const Select& m_select;
  const Scope& m_scope;
  QStringView m_statement;
};

}  // namespace

bool HasAggregate(const Expression& expression) {
  return IsAggregate(expression) || std::any_of(expression.operands.begin(), expression.operands.end(),
                                                [](const ExpressionPtr& operand) { return HasAggregate(*operand); });
}

bool IsGrouped(const Select& select) {
  return !select.groupBy.empty() || select.having != nullptr ||
         std::any_of(select.items.begin(), select.items.end(), [](const SelectItem& item) {
           return item.expression != nullptr && HasAggregate(*item.expression);
         });
}

void RequireGroupable(const Select& select, const Scope& scope, QStringView statement) {
  GroupingCheck(select, scope, statement).Run();
}

}  // namespace database
