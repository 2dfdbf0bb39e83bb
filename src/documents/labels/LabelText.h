#pragma once

#include "documents/Export.h"

#include <QList>
#include <QStringList>

namespace documents {

/// What stands at a place of a label.
struct LabelPart {
  enum class Kind {
    Text,     ///< Written by who made the sheet.
    Field,    ///< Somebody's value.
    Country,  ///< The value that stands alone, last, whatever line it has.
  };

  int line = 1;
  int position = 1;
  Kind kind = Kind::Field;
  QString value;  ///< A line feed begins a line of its own.
};

/// The lines of a label, none of them empty. A line whose fields are all empty goes with its texts ("C.P."). Values are
/// joined by a blank, but not before punctuation.
KELDOCUMENTOS_EXPORT QStringList LabelLines(QList<LabelPart> parts);

}  // namespace documents
