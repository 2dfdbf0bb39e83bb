#include "database/engine/ParameterValues.h"

namespace database {

void ParameterValues::Convert(const Plan& plan, const std::vector<Token>& literals, QStringView statement) {
  m_texts.clear();
  m_values.clear();
  for (const Binding& binding : plan.bindings) {
    const Token& literal = literals[static_cast<std::size_t>(binding.literal)];
    const QString column = binding.column == nullptr ? QString() : binding.column->name;
    const EngineValue value = ConvertLiteral(literal, binding.negated, binding.conversion, column);
    const std::size_t offset = m_texts.size();
    switch (value.kind) {
      case EngineValue::Kind::Integer:
        m_values.push_back({.kind = Kind::Integer, .integer = value.integer});
        continue;
      case EngineValue::Kind::Real:
        m_values.push_back({.kind = Kind::Real, .real = value.real});
        continue;
      case EngineValue::Kind::Amount:
        m_values.push_back({.kind = Kind::Amount, .integer = value.integer});
        continue;
      case EngineValue::Kind::TokenText:
        AppendUtf8(m_texts, literal, statement);
        break;
      case EngineValue::Kind::OwnText:
        AppendUtf8(m_texts, value.text);
        break;
    }
    m_values.push_back({.kind = Kind::Text, .offset = offset, .size = m_texts.size() - offset});
  }
}

}  // namespace database
