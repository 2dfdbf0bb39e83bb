#pragma once

#include "database/Schema.h"
#include "database/dialect/Effect.h"
#include "database/dialect/Literal.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace database {

/// What an engine must know of a parameter before there is a value for it.
enum class ParameterKind {
  Number,
  Text,
  Pattern,  ///< The right side of a LIKE.
};

/// How a literal of the statement becomes a parameter. The bindings of a plan stand in the order of the parameters in
/// its text.
struct Binding {
  int literal = 0;
  bool negated = false;
  Conversion conversion = Conversion::Verbatim;
  ParameterKind kind = ParameterKind::Number;
  const Column* column = nullptr;  ///< For error texts, a column of the schema; may be null.
};

/// A column of the result.
struct ResultColumn {
  QString label;
  bool isBoolean = false;
};

/// A statement of the dialect made ready for an engine, for every statement of the same shape. The schema that it was
/// made with must outlive it.
struct Plan {
  QByteArray sql;
  bool returnsRows = false;
  std::vector<Binding> bindings;
  std::vector<ResultColumn> columns;
  /// False when a literal is part of the statement itself (a position in ORDER BY): the plan then fits only the
  /// statement with the same literals.
  bool fitsShape = true;
  Effect effect;
  std::vector<const Table*> readTables;  ///< Those in FROM; for error texts.
};

}  // namespace database
