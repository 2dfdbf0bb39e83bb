#pragma once

#include <QString>

namespace remittances {

/// The number of a Spanish national identity document (DNI) as a tax identifier: eight digits and a check letter.
/// Source: Real Decreto 1553/2005, article 11, and the Ministry of the Interior's table of the letters (number modulo
/// 23).

/// A number of fewer than nine digits with zeros on its left, up to eight digits; any other text as it is.
QString WithEightDigits(const QString& text);
/// The letter that fits a number of eight digits; a null character for any other text.
QChar NationalIdentityLetter(const QString& text);

}  // namespace remittances
