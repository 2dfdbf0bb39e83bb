#pragma once

#include "platform/adodb/Connection.h"

#include <QString>
#include <QStringView>

#include <array>
#include <concepts>
#include <span>
#include <type_traits>

/// Statements as whole literals with places for values:
///
///   adodb::Execute(connection, u"UPDATE Paises SET Nombre='{}' WHERE IDPais={}", name, id);
///
/// A place is `{}`, the next value, or `{0}`, `{1}`, ..., a value by its position, as often as wanted; one statement
/// uses one of the two. Values are texts, which must stand between quotes (' or ") and get their apostrophes doubled,
/// whole numbers, which must not, Booleans, written -1 and 0 as numbers are, and Verbatim texts, which go in as they
/// are, anywhere. A statement whose places and values don't fit does not compile.
namespace adodb {

/// A text that goes into a statement as it stands: the word True, a list of identifiers, digits that a box let
/// through. Never what a user could have typed freely.
struct Verbatim {
  QString text;
};

namespace detail {

enum class ValueKind { Text, Number, Verbatim };

template <typename Value>
concept Number = std::integral<Value> && !std::same_as<Value, char> && !std::same_as<Value, char16_t>;

template <typename Value>
consteval ValueKind KindOf() {
  if constexpr (std::same_as<Value, Verbatim>) {
    return ValueKind::Verbatim;
  } else if constexpr (Number<Value>) {
    return ValueKind::Number;
  } else {
    static_assert(std::convertible_to<const Value&, QStringView>, "a value is a text, a whole number or Verbatim");
    return ValueKind::Text;
  }
}

// Called while a statement is compiled, which they end: the compiler names the one that it met.
void ThePlaceIsNotWrittenAsBracesOrNumberInBraces();
void TheStatementHasAPlaceWithoutAValue();
void AValueHasNoPlaceInTheStatement();
void NumberedAndPlainPlacesDoNotMix();
void ATextMustStandBetweenQuotes();
void ANumberMustNotStandBetweenQuotes();
void AQuoteIsNotClosed();

template <std::size_t Count>
consteval void CheckPlaces(const char16_t* form, const std::array<ValueKind, Count>& kinds) {
  std::array<bool, Count> used = {};
  std::size_t next = 0;
  bool plain = false;
  bool numbered = false;
  char16_t quote = 0;
  for (const char16_t* at = form; *at != 0; ++at) {
    if (quote != 0 ? *at == quote : (*at == u'\'' || *at == u'"')) {
      quote = quote != 0 ? u'\0' : *at;
    }
    if (*at != u'{') {
      continue;
    }
    ++at;
    std::size_t position = next;
    if (*at >= u'0' && *at <= u'9') {
      position = static_cast<std::size_t>(*at++ - u'0');
      numbered = true;
    } else {
      ++next;
      plain = true;
    }
    if (*at != u'}') {
      ThePlaceIsNotWrittenAsBracesOrNumberInBraces();
    }
    if (position >= Count) {
      TheStatementHasAPlaceWithoutAValue();
    }
    used[position] = true;
    if (kinds[position] == ValueKind::Text && quote == 0) {
      ATextMustStandBetweenQuotes();
    }
    if (kinds[position] == ValueKind::Number && quote != 0) {
      ANumberMustNotStandBetweenQuotes();
    }
  }
  if (quote != 0) {
    AQuoteIsNotClosed();
  }
  if (plain && numbered) {
    NumberedAndPlainPlacesDoNotMix();
  }
  for (const bool isUsed : used) {
    if (!isUsed) {
      AValueHasNoPlaceInTheStatement();
    }
  }
}

// A value on its way into a statement; a text is borrowed.
struct Value {
  ValueKind kind;
  qint64 number = 0;
  QStringView text = {};
};

template <typename Given>
Value ToValue(const Given& given) {
  if constexpr (std::same_as<Given, Verbatim>) {
    return {ValueKind::Verbatim, 0, given.text};
  } else if constexpr (std::same_as<Given, bool>) {
    return {ValueKind::Number, given ? -1 : 0};
  } else if constexpr (Number<Given>) {
    return {ValueKind::Number, static_cast<qint64>(given)};
  } else {
    return {ValueKind::Text, 0, QStringView(given)};
  }
}

QString Fill(const char16_t* form, std::span<const Value> values);

}  // namespace detail

/// A statement's form, checked against the types of its values when the program is compiled.
template <typename... Values>
class Statement {
 public:
  consteval Statement(const char16_t* form) : m_form(form) {  // NOLINT: a literal is a statement
    detail::CheckPlaces<sizeof...(Values)>(form, {detail::KindOf<std::remove_cvref_t<Values>>()...});
  }

  /// The statement with the values in their places.
  QString Text(const Values&... values) const {
    const std::array<detail::Value, sizeof...(Values)> given{detail::ToValue(values)...};
    return detail::Fill(m_form, given);
  }

 private:
  const char16_t* m_form;
};

/// The statement with the values in their places.
template <typename... Values>
QString StatementText(std::type_identity_t<Statement<Values...>> statement, const Values&... values) {
  return statement.Text(values...);
}

/// Runs the statement on the connection; see Connection::Execute.
template <typename... Values>
std::unique_ptr<Recordset> Execute(Connection& connection, std::type_identity_t<Statement<Values...>> statement,
                                   const Values&... values) {
  return connection.Execute(statement.Text(values...));
}

}  // namespace adodb
