#pragma once

#include "documents/letter/HalfPoints.h"
#include "documents/letter/Paper.h"

class QPainter;

/// What goes to paper and how it looks before: whoever has pages to print describes them once (Pages); the preview, the
/// printer and the PDF file paint them.
namespace paper {

/// Pages of one size. Counted from 0.
class Pages {
 public:
  virtual ~Pages() = default;

  /// 0 where there is no room for anything.
  virtual int Count() const = 0;
  virtual const documents::Paper& Sheet() const = 0;
  /// On a painter whose unit is the half-point and whose origin is the sheet's upper left corner. The sheet's own
  /// colour is the caller's.
  virtual void Paint(QPainter& painter, int page) const = 0;
};

}  // namespace paper
