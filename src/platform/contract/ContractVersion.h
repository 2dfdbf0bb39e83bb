#pragma once

#include <QString>

#include <compare>

/// The contract between host and component: the members and arguments of both sides, the types that cross, the numbers.
namespace contract {

/// A version of the contract. Another major number means that a host and a component don't understand each other; a
/// higher minor one adds members, so that a host which needs them asks for it.
struct Version {
  int major = 0;
  int minor = 0;

  /// "1.0"
  QString Text() const { return QStringLiteral("%1.%2").arg(major).arg(minor); }
  friend constexpr auto operator<=>(const Version&, const Version&) = default;
};

/// The version that this platform, and what is built with it, keeps to.
inline constexpr Version current{1, 0};

}  // namespace contract
