#include "host/look/Colours.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

// The shares of the text's colour in a line: visible, and quieter than a text.
constexpr double lineShare = 0.5;
constexpr double disabledLineShare = 0.25;
constexpr double ringLightening = 0.5;

// The numbers of WCAG 2, "relative luminance".
double Linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

}  // namespace

QColor Mix(const QColor& over, const QColor& under, double share) {
  const auto mix = [share](float a, float b) { return static_cast<float>(a * share + b * (1 - share)); };
  return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
                          mix(over.blueF(), under.blueF()));
}

double Contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

bool IsDark(const QPalette& palette) {
  return Luminance(palette.color(QPalette::WindowText)) > Luminance(palette.color(QPalette::Window));
}

QColor LineColour(const QPalette& palette, bool isEnabled) {
  return Mix(palette.color(QPalette::Active, QPalette::WindowText), palette.color(QPalette::Window),
             isEnabled ? lineShare : disabledLineShare);
}

QColor RingColour(const QPalette& palette) {
  const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
  return IsDark(palette) ? Mix(palette.color(QPalette::WindowText), accent, ringLightening) : accent;
}

}  // namespace host
