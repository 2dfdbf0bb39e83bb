#pragma once

#include "platform/automation/Conversion.h"

/// Values of columns as dialogs read them. What can't be converted is the error of the conversion.
namespace framework {

/// The text of a value, Null as the empty one.
using automation::Text;

/// The identifier in a column that may be empty; Null as 0.
inline qint32 IdOrZero(const QVariant& value) {
  return automation::IsNull(value) ? 0 : automation::CLng(value);
}

/// A yes or no in a column that may be empty; Null as no.
inline bool IsTrue(const QVariant& value) {
  return !automation::IsNull(value) && automation::CBool(value);
}

}  // namespace framework
