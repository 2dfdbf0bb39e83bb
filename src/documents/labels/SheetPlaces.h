#pragma once

#include "documents/Export.h"
#include "documents/labels/Sheet.h"

#include <QSet>

#include <vector>

namespace documents {

/// What is left of the first sheet: labels count from 1, row by row.
struct SheetStart {
  int first = 1;
  QSet<int> skipped;  ///< Used or torn labels behind it.
};

/// Which piece comes to which label. A first sheet with nothing left is not used.
class KELDOCUMENTOS_EXPORT SheetPlaces {
 public:
  SheetPlaces(const Sheet& sheet, const SheetStart& start);

  struct Place {
    int sheet = 0;  ///< From 0.
    int label = 1;  ///< From 1.
  };
  /// `piece` from 0.
  Place Of(int piece) const;
  int SheetsFor(int pieces) const;

 private:
  int m_totals;
  std::vector<int> m_onFirst;
};

}  // namespace documents
