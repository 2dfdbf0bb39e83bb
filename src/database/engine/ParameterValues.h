#pragma once

#include "database/dialect/Plan.h"
#include "database/dialect/Token.h"

#include <QStringView>

#include <string>
#include <string_view>
#include <vector>

namespace database {

/// The values of a statement's parameters, in the order of its plan's bindings. The object keeps its memory from one
/// statement to the next; the values stay valid until the next one.
class ParameterValues {
 public:
  enum class Kind { Integer, Real, Amount, Text };

  struct Value {
    Kind kind = Kind::Integer;
    qint64 integer = 0;  ///< Ten-thousandths for Amount.
    double real = 0;
    std::size_t offset = 0;  ///< Of a text among all the texts.
    std::size_t size = 0;
  };

  /// Converts the literals of `statement` as the plan says. Raises 6 and 13 (see ConvertLiteral).
  void Convert(const Plan& plan, const std::vector<Token>& literals, QStringView statement);

  const std::vector<Value>& Values() const { return m_values; }
  /// The UTF-8 of a text.
  std::string_view TextOf(const Value& value) const { return {m_texts.data() + value.offset, value.size}; }

 private:
  std::vector<Value> m_values;
  std::string m_texts;
};

}  // namespace database
