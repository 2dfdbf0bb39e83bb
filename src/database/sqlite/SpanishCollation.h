#pragma once

#include <QByteArray>

#include <array>
#include <string_view>

struct UCollator;
struct sqlite3;

namespace database {

/// Order and equality of texts: Spanish, with regard to accents and ñ, without regard to case or to trailing
/// blanks (ICU's `es` rules at secondary strength).
class SpanishCollation {
 public:
  /// The one of this process. Raises EngineFailure when ICU's data is missing.
  static const SpanishCollation& Instance();

  /// Less than, equal to or greater than 0, as the first text (UTF-8) sorts before, with or behind the second.
  int Compare(std::string_view first, std::string_view second) const;

  /// Makes the collation known to an open database. Returns the engine's result code.
  int Register(sqlite3* engine) const;

  /// Changes when a newer ICU orders texts in another way, so that indexes must be rebuilt.
  QByteArray Version() const;

 private:
  SpanishCollation();
  void RankAscii();

  const UCollator* m_collator = nullptr;
  // The place of every printable ASCII character in the order; 0 for one that needs the full comparison.
  std::array<unsigned char, 256> m_rank{};
};

}  // namespace database
