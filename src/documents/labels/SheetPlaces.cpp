#include "documents/labels/SheetPlaces.h"

#include <numeric>

namespace documents {

SheetPlaces::SheetPlaces(const Sheet& sheet, const SheetStart& start) : m_totals(sheet.totals) {
  for (int label = std::max(1, start.first); label <= m_totals; ++label) {
    if (!start.skipped.contains(label)) {
      m_onFirst.push_back(label);
    }
  }
  if (m_onFirst.empty()) {
    m_onFirst.resize(static_cast<std::size_t>(m_totals));
    std::iota(m_onFirst.begin(), m_onFirst.end(), 1);
  }
}

SheetPlaces::Place SheetPlaces::Of(int piece) const {
  const int onFirst = static_cast<int>(m_onFirst.size());
  if (piece < onFirst) {
    return {0, m_onFirst[static_cast<std::size_t>(piece)]};
  }
  return {1 + (piece - onFirst) / m_totals, 1 + (piece - onFirst) % m_totals};
}

int SheetPlaces::SheetsFor(int pieces) const {
  return pieces == 0 ? 0 : Of(pieces - 1).sheet + 1;
}

}  // namespace documents
