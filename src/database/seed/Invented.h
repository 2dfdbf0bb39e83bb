#pragma once

#include <QString>

#include <random>
#include <span>

namespace database {

/// A source of invented data: the same numbers at every run and on every machine.
class Invented {
 public:
  /// From 0 to `limit` - 1. The remainder, not the library's distribution, because that one may differ between
  /// compilers.
  int Number(int limit) { return static_cast<int>(m_engine() % static_cast<std::mt19937::result_type>(limit)); }
  bool Chance(int percent) { return Number(100) < percent; }
  QString From(std::span<const char16_t* const> words) {
    return QString::fromUtf16(words[static_cast<std::size_t>(Number(static_cast<int>(words.size())))]);
  }
  QString Digits(int count) {
    QString digits;
    for (int i = 0; i < count; ++i) {
      digits += QChar(u'0' + Number(10));
    }
    return digits;
  }
  /// A date between 2015 and 2024, as the database keeps it: 2020-01-31.
  QString Date();
  /// A tax identifier of a natural person with its right letter, from the block of numbers that is not in use.
  QString Nif();

 private:
  std::mt19937 m_engine{20240229};
};

}  // namespace database
