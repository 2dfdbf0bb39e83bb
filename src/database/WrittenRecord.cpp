#include "database/WrittenRecord.h"

#include "database/dialect/Effect.h"
#include "database/dialect/Lexer.h"
#include "database/dialect/Literal.h"
#include "database/dialect/StatementParser.h"
#include "database/engine/EngineBeneath.h"
#include "database/engine/EngineConnection.h"

#include <cmath>

namespace database {

namespace {

WrittenRecord::Kind KindOf(Effect::Kind kind) {
  switch (kind) {
    case Effect::Kind::Inserts:
      return WrittenRecord::Kind::Inserted;
    case Effect::Kind::Deletes:
      return WrittenRecord::Kind::Deleted;
    default:
      return WrittenRecord::Kind::Updated;
  }
}

// A number that is no whole one is no row's key.
std::optional<qint64> KeyOf(const Token& literal, bool negated) {
  const EngineValue value = ConvertLiteral(literal, negated, Conversion::Number, {});
  constexpr double exact = 9007199254740992.0;
  if (value.kind == EngineValue::Kind::Integer) {
    return value.integer;
  }
  const bool isWhole = std::fabs(value.real) < exact && value.real == std::nearbyint(value.real);
  return isWhole ? std::optional(static_cast<qint64>(value.real)) : std::nullopt;
}

}  // namespace

std::optional<WrittenRecord> WrittenBy(const QString& statement) {
  Lexer lexer;
  lexer.Read(statement);
  if (lexer.Tokens().front().IsWord(u"SELECT")) {
    return std::nullopt;
  }
  TokenReader reader(lexer.Tokens(), statement);
  const Statement parsed = StatementParser(reader).Parse();
  const Effect effect = EffectOf(Schema::Current(), parsed);
  if (effect.kind == Effect::Kind::None) {
    return std::nullopt;
  }
  WrittenRecord written{KindOf(effect.kind),
                        effect.writtenTable->name,
                        std::nullopt,
                        effect.makesKey,
                        TextOf(effect.condition, statement, lexer.Tokens()).toString(),
                        QStringList()};
  for (const Assignment& assignment : parsed.assignments) {
    written.columns.append(assignment.column.toString());
  }
  if (effect.givenKey) {
    const Token& literal = lexer.Literals()[static_cast<std::size_t>(effect.givenKey->literal)];
    written.key = KeyOf(literal, effect.givenKey->negated);
  }
  return written;
}

std::optional<qint64> NewKeyOf(adodb::Connection& connection, const QString& table) {
  const EngineConnection* engine = EngineBeneath(connection);
  const Table* written = Schema::Current().FindTable(table);
  return engine == nullptr || written == nullptr ? std::nullopt : engine->NewKeyOf(*written);
}

}  // namespace database
