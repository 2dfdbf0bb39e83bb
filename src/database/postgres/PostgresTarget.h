#pragma once

#include "database/dialect/Target.h"

namespace database {

/// How statements for PostgreSQL are written. Names are in lower case, so that they need no quotes in the server's own
/// tools. Texts are of the type bpchar, which keeps blanks at the end and compares without them. Functions that the
/// server lacks are made with the tables (PostgresDdl).
class PostgresTarget : public Target {
 public:
  static const PostgresTarget& Instance();

  void AppendParameter(QString& sql, std::size_t number, ParameterKind kind) const override;
  bool NumbersParameters() const override { return true; }
  QString Name(QStringView name) const override;
  SqlText ValueOf(const SqlText& condition) const override;
  SqlText ConditionOf(const Fragment& value) const override;
  SqlText Collated(const SqlText& text) const override;
  SqlText Joined(const SqlText& first, const SqlText& second) const override;
  SqlText Concatenated(const SqlText& first, const SqlText& second) const override;
  SqlText Like(const SqlText& text, const SqlText& pattern, bool negated) const override;
  SqlText Quotient(Division division, const SqlText& first, const SqlText& second) const override;
  SqlText Converted(const Fragment& value, Conversion conversion) const override;
  QStringView Form(const Function& function, ValueType result) const override;
  SqlText Union(std::span<const SqlText> selects) const override;
  SqlText OrderItem(const SqlText& value, bool descending) const override;
  bool KeepsKeyOrder() const override { return false; }
};

}  // namespace database
