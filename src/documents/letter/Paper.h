#pragma once

#include "documents/Export.h"

#include <QPageSize>
#include <QStringView>

namespace documents {

/// A ten-thousandth of a centimetre: what a fixed-point measure holds exactly, so that ten labels of 2,97 cm fill a
/// page of 29,7 cm and don't exceed it.
using Micrometres = qint64;

inline constexpr Micrometres micrometresPerCentimetre = 10000;

constexpr double InCentimetres(Micrometres length) {
  return double(length) / micrometresPerCentimetre;
}

/// A sheet of paper, upright.
struct Paper {
  QStringView name;  ///< What users call it.
  Micrometres width;
  Micrometres height;

  /// The same for a printer.
  KELDOCUMENTOS_EXPORT QPageSize PageSize() const;
};

/// The paper of letters and labels that name no other.
KELDOCUMENTOS_EXPORT const Paper& UsualPaper();

}  // namespace documents
