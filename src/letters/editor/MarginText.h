#pragma once

#include <QString>

#include <optional>

/// Margins as they are typed, in centimetres.
namespace letters {

/// The number that a margin box means, with a comma or a point as its decimal mark; nothing when it is no number.
std::optional<double> ReadMargin(const QString& text);

/// The number as a box shows it, in the Spanish locale.
QString MarginText(double margin);

/// What is stored for a margin box: its number in single precision, as a text again. Nothing when it is no number, or
/// one that single precision does not have.
std::optional<QString> StoredMargin(const QString& text);

}  // namespace letters
