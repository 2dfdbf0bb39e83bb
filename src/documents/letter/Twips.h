#pragma once

namespace documents {

/// A length on paper, in twentieths of a point; letters count 567 of them in a centimetre.
struct Twips {
  int count = 0;

  constexpr bool operator==(const Twips&) const = default;
  constexpr bool operator<(const Twips& other) const { return count < other.count; }
  constexpr Twips operator-() const { return {-count}; }
};

constexpr Twips operator+(Twips a, Twips b) {
  return {a.count + b.count};
}
constexpr Twips operator-(Twips a, Twips b) {
  return {a.count - b.count};
}
constexpr Twips operator*(int times, Twips length) {
  return {times * length.count};
}

}  // namespace documents
