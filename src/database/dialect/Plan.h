#pragma once

#include "database/dialect/Literal.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace database {

/// How a literal of the statement becomes a parameter. The bindings of a plan stand in the order of the parameters in
/// its text.
struct Binding {
  int literal = 0;
  bool negated = false;
  Conversion conversion = Conversion::Verbatim;
  QString column;  ///< For error texts; may be empty.
};

/// A column of the result.
struct ResultColumn {
  QString label;
  bool isBoolean = false;
};

/// A statement of the dialect made ready for an engine, for every statement of the same shape.
struct Plan {
  QByteArray sql;
  bool returnsRows = false;
  std::vector<Binding> bindings;
  std::vector<ResultColumn> columns;
  /// False when a literal is part of the statement itself (a position in ORDER BY): the plan then fits only the
  /// statement with the same literals.
  bool fitsShape = true;
};

}  // namespace database
