#pragma once

#include "documents/letter/Paper.h"

#include <QString>

class QPainter;

namespace host {

/// Pages that somebody paints one after the other.
class PaintedPages {
 public:
  virtual ~PaintedPages() = default;
  /// Begins a page. The painter's unit is the half-point, its origin the paper's upper left corner.
  virtual QPainter& Next() = 0;
};

/// Work for paper in parts: letters, sheets of labels, or pages of a list.
class PrintedWork {
 public:
  PrintedWork() = default;
  PrintedWork(const PrintedWork&) = delete;
  PrintedWork& operator=(const PrintedWork&) = delete;
  virtual ~PrintedWork() = default;

  virtual QString Title() const = 0;
  virtual int Count() const = 0;
  /// Of all its pages; wider than high for pages that lie.
  virtual const documents::Paper& Paper() const { return documents::UsualPaper(); }
  /// What a file of the part is called, without its suffix; it may hold anything.
  virtual QString NameOf(int part) const = 0;
  virtual void Paint(int part, PaintedPages& pages) const = 0;
};

}  // namespace host
