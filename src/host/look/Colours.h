#pragma once

#include <QPalette>

namespace host {

/// `share` (0 to 1) of one colour over another.
QColor Mix(const QColor& over, const QColor& under, double share);

/// How far two opaque colours stand apart, 1 to 21, as WCAG 2 computes it ("contrast ratio").
double Contrast(const QColor& one, const QColor& other);

/// Text is brighter than its ground.
bool IsDark(const QPalette& palette);

/// The line around boxes, buttons, marks, lists and frames.
QColor LineColour(const QPalette& palette, bool isEnabled = true);

/// The ring around what has the focus.
QColor RingColour(const QPalette& palette);

}  // namespace host
