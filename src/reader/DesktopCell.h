#pragma once

#include "reader/FrameFormat.h"
#include "reader/Libmdb.h"

#include <QByteArray>

namespace reader {

/// What a column's cells are.
Cell KindOf(const MdbColumn& column);

struct CellValue {
  Cell kind = Cell::None;
  QByteArray value;
};

/// The value of a field of the row that lies in the handle's page. What was written across several pages is followed.
CellValue ReadCell(MdbHandle& file, MdbColumn& column, const MdbField& field);

}  // namespace reader
