#pragma once

#include "host/mailing/output/PrintedWork.h"

#include <QList>

namespace host {

/// Letters or labels for people.
class Mailing : public PrintedWork {
 public:
  /// The first part for that person, -1 for none.
  virtual int PartFor(int person) const = 0;
  /// A number for each letter or label that two of them share only where they say the same to the same people.
  virtual QList<std::size_t> Fingerprints() const = 0;
};

}  // namespace host
