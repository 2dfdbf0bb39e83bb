#pragma once

#include <QLabel>

namespace host {

/// A label of `parent` that shows its text to the letter, whatever is in it, and wraps it. A word that is longer than
/// any is cut off rather than widening the window.
QLabel* PlainLabel(const QString& text, QWidget* parent);

/// One whose text comes later: found by `name`.
QLabel* NamedLabel(const QString& name, QWidget* parent);

}  // namespace host
