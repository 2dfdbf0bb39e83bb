#include "database/postgres/PostgresParameters.h"

#include "database/engine/EngineText.h"
#include "database/postgres/PostgresTypes.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <array>
#include <charconv>
#include <string_view>

using namespace Qt::StringLiterals;

namespace database {

namespace {

// The protocol numbers parameters with 16 bits.
constexpr std::size_t mostParameters = 65535;

constexpr std::string_view standIn = "\xEF\xB7\x90";  // U+FDD0
constexpr std::string_view replacement = "\xEF\xBF\xBD";

bool NeedsStandIn(std::string_view text) {
  return text.find('\0') != std::string_view::npos || text.find(standIn) != std::string_view::npos;
}

// Never without a point, which would make it a whole number.
QByteArray Digits(double value) {
  std::array<char, 400> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
  const QByteArray fixed(digits.data(), end - digits.data());
  return fixed.contains('.') ? fixed : fixed + ".0";
}

QByteArray AmountDigits(qint64 scaled) {
  constexpr qsizetype decimals = 4;
  const bool negative = scaled < 0;
  QByteArray digits = QByteArray::number(scaled).mid(negative ? 1 : 0).rightJustified(decimals + 1, '0');
  digits.insert(digits.size() - decimals, '.');
  return negative ? '-' + digits : digits;
}

}  // namespace

PostgresParameters::PostgresParameters(const Plan& plan, const ParameterValues& values) {
  const std::size_t count = values.Values().size();
  if (count > mostParameters) {
    throw automation::Error(adodb::StatementTooBig,
                            u"La instrucción SQL tiene demasiados valores (%1). Divídala en varias."_s.arg(count));
  }
  m_own.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const ParameterValues::Value& value = values.Values()[i];
    switch (value.kind) {
      case ParameterValues::Kind::Integer:
        AddNumber('i', postgres::int8, QByteArray::number(value.integer));
        break;
      case ParameterValues::Kind::Real:
        AddNumber('n', postgres::numeric, Digits(value.real));
        break;
      case ParameterValues::Kind::Amount:
        AddNumber('n', postgres::numeric, AmountDigits(value.integer));
        break;
      case ParameterValues::Kind::Text:
        AddText(values.TextOf(value), plan.bindings[i].kind);
        break;
    }
  }
}

void PostgresParameters::AddNumber(char letter, unsigned type, QByteArray digits) {
  m_own.push_back(std::move(digits));
  m_types.push_back(type);
  m_pointers.push_back(m_own.back().constData());
  m_lengths.push_back(0);
  m_formats.push_back(0);
  m_signature += letter;
}

// Texts go as bytes with their length: nothing is copied and nothing ends them early.
void PostgresParameters::AddText(std::string_view text, ParameterKind kind) {
  if (NeedsStandIn(text)) {
    m_own.push_back(BytesForServer(text));
    text = {m_own.back().constData(), static_cast<std::size_t>(m_own.back().size())};
  }
  m_types.push_back(kind == ParameterKind::Pattern ? postgres::text : postgres::bpchar);
  m_pointers.push_back(text.data() == nullptr ? "" : text.data());
  m_lengths.push_back(static_cast<int>(text.size()));
  m_formats.push_back(1);
  m_signature += kind == ParameterKind::Pattern ? 'p' : 't';
}

QByteArray BytesForServer(std::string_view text) {
  QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
  bytes.replace(standIn, replacement);
  return bytes.replace(QByteArrayView("\0", 1), standIn);
}

QString TextFromServer(std::string_view bytes) {
  QString text = TextFromEngine(bytes);
  return text.replace(QChar(0xFDD0), QChar(0));
}

}  // namespace database
