#include "database/sqlite/SqliteFunctions.h"

#include "database/Errors.h"
#include "database/dialect/Literal.h"
#include "database/engine/EngineText.h"
#include "database/sqlite/SqliteTarget.h"
#include "platform/automation/Conversion.h"

#include <sqlite3.h>

#include <cmath>
#include <limits>

namespace database {

namespace {

constexpr double moneyScale = 10000.0;

std::string_view BytesOf(sqlite3_value* value) {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

QString TextOf(sqlite3_value* value) {
  return TextFromEngine(BytesOf(value));
}

void ReturnText(sqlite3_context* context, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  sqlite3_result_text64(context, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
}

void ReturnError(sqlite3_context* context, const automation::Error& error) {
  const QByteArray text = error.Description().toUtf8();
  sqlite3_result_error(context, text.constData(), static_cast<int>(text.size()));
  sqlite3_result_error_code(context, error.Number() == automation::Overflow ? SQLITE_RANGE : SQLITE_MISMATCH);
}

void ReturnValue(sqlite3_context* context, const EngineValue& value) {
  if (value.kind == EngineValue::Kind::Real) {
    sqlite3_result_double(context, value.real);
  } else if (value.kind == EngineValue::Kind::Amount) {
    sqlite3_result_double(context, MoneyToDouble(value.integer));
  } else {
    sqlite3_result_int64(context, value.integer);
  }
}

bool IsNull(sqlite3_value* value) {
  return sqlite3_value_type(value) == SQLITE_NULL;
}

template <bool Upper>
void ChangeCase(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (!IsNull(arguments[0])) {
    const QString text = TextOf(arguments[0]);
    ReturnText(context, Upper ? text.toUpper() : text.toLower());
  }
}

void ToText(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_FLOAT) {
    ReturnText(context, automation::CStr(sqlite3_value_double(arguments[0])));
  } else if (!IsNull(arguments[0])) {
    ReturnText(context, TextOf(arguments[0]));
  }
}

template <Conversion Target>
void ToNumber(sqlite3_context* context, int, sqlite3_value** arguments) {
  try {
    switch (sqlite3_value_type(arguments[0])) {
      case SQLITE_NULL:
        return;
      case SQLITE_INTEGER:
        if constexpr (Target == Conversion::Number) {
          sqlite3_result_value(context, arguments[0]);
          return;
        }
        [[fallthrough]];
      case SQLITE_FLOAT:
        ReturnValue(context, ConvertNumber(sqlite3_value_double(arguments[0]), Target, {}));
        return;
      default:
        ReturnValue(context, ConvertText(TextOf(arguments[0]), Target, {}));
    }
  } catch (const automation::Error& error) {
    ReturnError(context, error);
  }
}

// Rounds what an arithmetic expression gives, for every row of an update: adding and taking away a number whose
// last bit counts one rounds to a whole number without a call. What lies near a half takes the long way.
void ToMoney(sqlite3_context* context, int count, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_FLOAT) {
    constexpr double lastBitIsOne = 6755399441055744.0;
    constexpr double plain = 1e15;
    constexpr double clearlyNoHalf = 0.49;
    const double scaled = sqlite3_value_double(arguments[0]) * moneyScale;
    const double rounded = (scaled + lastBitIsOne) - lastBitIsOne;
    if (std::fabs(scaled) < plain && std::fabs(scaled - rounded) < clearlyNoHalf) {
      sqlite3_result_double(context, rounded / moneyScale);
      return;
    }
  }
  ToNumber<Conversion::Money>(context, count, arguments);
}

struct MoneySum {
  qint64 scaled;
  bool hasRows;
};

void SumStep(sqlite3_context* context, int, sqlite3_value** arguments) {
  auto* sum = static_cast<MoneySum*>(sqlite3_aggregate_context(context, sizeof(MoneySum)));
  if (sum == nullptr || IsNull(arguments[0])) {
    return;
  }
  sum->hasRows = true;
  const double scaled = std::nearbyint(sqlite3_value_double(arguments[0]) * moneyScale);
  constexpr double limit = 9.2e18;
  if (!(std::fabs(scaled) < limit) || __builtin_add_overflow(sum->scaled, static_cast<qint64>(scaled), &sum->scaled)) {
    ReturnError(context, NumberTooBig(u"SUM", {}));
  }
}

void SumFinal(sqlite3_context* context) {
  const auto* sum = static_cast<MoneySum*>(sqlite3_aggregate_context(context, 0));
  if (sum != nullptr && sum->hasRows) {
    sqlite3_result_double(context, static_cast<double>(sum->scaled) / moneyScale);
  }
}

// `%` stands for any text, `_` for one character. Going back only to the last `%` keeps the time at the product
// of the lengths at worst.
bool Matches(QStringView pattern, QStringView text) {
  qsizetype p = 0;
  qsizetype t = 0;
  qsizetype lastAny = -1;
  qsizetype resume = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == u'%') {
      lastAny = p++;
      resume = t;
    } else if (p < pattern.size() && (pattern[p] == u'_' || pattern[p] == text[t])) {
      ++p;
      ++t;
    } else if (lastAny >= 0) {
      p = lastAny + 1;
      t = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == u'%') {
    ++p;
  }
  return p == pattern.size();
}

void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (!IsNull(arguments[0]) && !IsNull(arguments[1])) {
    const QString pattern = TextOf(arguments[0]).toCaseFolded();
    const QString text = TextOf(arguments[1]).toCaseFolded();
    sqlite3_result_int(context, Matches(pattern, text) ? 1 : 0);
  }
}

using ScalarFunction = void (*)(sqlite3_context*, int, sqlite3_value**);

constexpr int safeFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;

int RegisterScalar(sqlite3* engine, QStringView name, int arguments, ScalarFunction function) {
  return sqlite3_create_function_v2(engine, name.toLatin1().constData(), arguments, safeFlags, nullptr, function,
                                    nullptr, nullptr, nullptr);
}

}  // namespace

int RegisterFunctions(sqlite3* engine) {
  struct Entry {
    QStringView name;
    int arguments;
    ScalarFunction function;
  };
  const Entry entries[] = {
      {sqlite::upper, 1, ChangeCase<true>},
      {sqlite::lower, 1, ChangeCase<false>},
      {sqlite::toText, 1, ToText},
      {sqlite::toNumber, 1, ToNumber<Conversion::Number>},
      {sqlite::toInteger, 1, ToNumber<Conversion::Integer>},
      {sqlite::toDecimal, 1, ToNumber<Conversion::Decimal>},
      {sqlite::toMoney, 1, ToMoney},
      {sqlite::toBoolean, 1, ToNumber<Conversion::Boolean>},
      {u"like", 2, Like},
  };
  for (const Entry& entry : entries) {
    const int code = RegisterScalar(engine, entry.name, entry.arguments, entry.function);
    if (code != SQLITE_OK) {
      return code;
    }
  }
  return sqlite3_create_function_v2(engine, sqlite::sumMoney.toLatin1().constData(), 1, safeFlags, nullptr, nullptr,
                                    SumStep, SumFinal, nullptr);
}

}  // namespace database
