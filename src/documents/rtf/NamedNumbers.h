#pragma once

#include <QByteArray>
#include <QSet>

namespace rtf {

/// The numbers of fonts and colours that a letter's bytes name, whether its tables have them or not, that of its
/// default font among them: bytes that are kept must not come to mean something that is added.
struct NamedNumbers {
  QSet<int> fonts;
  QSet<int> colours;

  static NamedNumbers Of(const QByteArray& letter);
};

}  // namespace rtf
