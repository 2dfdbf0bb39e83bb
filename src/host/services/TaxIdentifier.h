#pragma once

#include <QString>
#include <QStringView>

/// Spanish tax identifiers: the NIF of natural persons (DNI, and the K, L and M numbers), the NIE of foreigners and
/// the NIF of legal persons and entities, which everybody still calls CIF.
///
/// Sources: Real Decreto 1065/2007, articles 18 to 24 (who has which number, and its form), and Orden EHA/451/2008
/// (the letters of legal persons and the check character).
namespace host {

enum class TaxIdentifierKind { Nif, Nie, Cif };

/// The numbers that the services contract gives for each verdict.
enum class TaxIdentifierVerdict : int {
  Valid = 1,
  UnknownFormat = 2,        ///< No Spanish identifier looks like this.
  WrongCheckCharacter = 3,  ///< The form is right, the check character is not.
  InvalidFirstLetter = 4,   ///< The form of a CIF, with a first letter that no entity has.
};

struct TaxIdentifier {
  TaxIdentifierVerdict verdict = TaxIdentifierVerdict::UnknownFormat;
  /// What it is; for an unknown format, what it most looks like.
  TaxIdentifierKind kind = TaxIdentifierKind::Nif;
  /// The check character that fits; empty when the form is unknown or the first letter is invalid.
  QString control;
  /// The identifier in its one stored form: capitals, no marks, no country prefix, leading zeros filled in.
  QString normalised;
};

/// Checks an identifier as people type it: blanks, points, dashes and slashes anywhere, any case, a prefix "ES",
/// a DNI or NIE without its leading zeros.
///
/// The check character of a CIF may be the digit or the letter, whatever its first letter, for old documents carry
/// either; `control` is the one of the right class for the first letter (a letter for N, P, Q, R, S, W and for numbers
/// of the province 00; a digit for A, B, E and H), and of the class that was typed where the rules allow both.
TaxIdentifier CheckTaxIdentifier(QStringView text);

/// "NIF", "NIE" or "CIF".
QString KindName(TaxIdentifierKind kind);

}  // namespace host
