#include "database/dialect/Ast.h"

namespace database {

Expression::SignedLiteral Expression::AsLiteral() const {
  const Expression* inner = this;
  SignedLiteral literal;
  while (inner->kind == ExpressionKind::Negation) {
    literal.negated = !literal.negated;
    inner = inner->operands.front().get();
  }
  literal.token = inner->kind == ExpressionKind::Literal ? &inner->token : nullptr;
  return literal;
}

}  // namespace database
