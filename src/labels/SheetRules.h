#pragma once

#include "documents/labels/Sheet.h"

#include <QString>
#include <QStringList>

#include <optional>

/// The arithmetic and the checks of the label sheet dialog, on the texts of its boxes. Where a text is no number, error
/// 13 leaves a function, and 6 where one is too large, unless it says otherwise.
namespace labels {

/// The number that counts for the bounds of a box: "0" followed by the text, in fixed point, so that an empty box is 0.
/// Nothing for a text that is no number; the largest amount for one that is too large. No error.
std::optional<automation::Currency> BoundedNumber(const QString& text);

/// The bound that takes the place of the text; nothing where the text may stay, or is no number. No error.
std::optional<QString> BoundFor(const QString& text, documents::Limits limits);

/// True for a number above the bound. No error.
bool IsAbove(const QString& text, int bound);

/// True for a text whose number RowCount takes: none, or one that fits 16 bits. No error.
bool IsCount(const QString& text);

/// True when both boxes hold a number and there are more labels in a row than in all. No error.
bool ExceedsTotal(const QString& perRow, const QString& totals);

/// The number of rows: totals by labels per row, rounded up, in 16-bit numbers. "0" for no label per row, nothing where
/// a text is missing.
QString RowCount(const QString& totals, const QString& perRow);

/// The text of a measure or a count as it is stored: through fixed point and back, so that "6," is "6" and a lone
/// comma, which the bounds read as 0, is "0".
QString StoredNumber(const QString& text);

/// What the sheet dialog's controls say when it is to be stored.
struct SheetTexts {
  QStringList boxes;     ///< of every text box
  QStringList captions;  ///< of every label
  QString totals;
  QString perRow;
  QString rows;
  QString width;   ///< cm
  QString height;  ///< cm
};

enum class SheetBox { None, Totals, PerRow, Width, Height };

/// Why a sheet is not stored.
struct SheetRefusal {
  int firstString = 0;
  int secondString = 0;  ///< 0 for none; joined to the first by a line break.
  SheetBox box = SheetBox::None;
  bool operator==(const SheetRefusal&) const = default;
};

/// The first check that fails, in the order in which they are made.
std::optional<SheetRefusal> RefusalOf(const SheetTexts& texts);

}  // namespace labels
