#pragma once

#include <QLocale>
#include <QString>
#include <QVariant>

namespace moving {

/// Whether a value that a Recordset gave is a number.
inline bool IsNumber(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
      return true;
    default:
      return false;
  }
}

/// A number in full, with a decimal point, and so that reading it gives the same number again.
inline QString PlainNumber(const QVariant& value) {
  return value.typeId() == QMetaType::Double ? QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest)
                                             : QString::number(value.toLongLong());
}

}  // namespace moving
