#pragma once

#include "host/mailing/pieces/LabelFields.h"

#include <vector>

namespace host {

/// Labels of bank disks.
struct DiskWish {
  QList<int> disks;    ///< All where empty.
  QList<int> issuers;  ///< Where a presenter has several, those that are meant.
};

struct DiskLabel {
  QString name;        ///< "Disco 3"
  QStringList values;  ///< In the order of the fields; texts are empty.
  bool hasIssuer = true;
};

/// What the labels of the disks say, in the order of their dates. Bank and branch are the presenter's. Raises 5, in
/// words, for a disk that is not there, and for a presenter with several issuers none or two of which are meant.
std::vector<DiskLabel> ReadDiskLabels(adodb::Connection& connection, const QList<LabelField>& fields,
                                      const DiskWish& wish);

}  // namespace host
