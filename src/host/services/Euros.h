#pragma once

#include <QString>
#include <QVariant>

/// Amounts in euros as they are shown and typed. The currency sign is never shown: labels and column titles say it,
/// and the texts go back into the database, which takes "1.234,50" as it stands.
namespace host {

/// An amount with thousands points and two decimals: 1234.5 gives "1.234,50"; halves round away from zero.
///
/// A text is read as people type it: a euro sign and blanks are skipped; where a comma is present it is the decimal
/// mark and points are thousands; a single point is the decimal mark unless exactly three digits follow it.
/// Empty and Null give the empty text. What is no amount comes back as it was, so that nothing typed is lost and
/// the database refuses it by name.
QString FormatEuros(const QVariant& amount);

/// The key filter of an amount box. `key` is a character code, `text` what the box holds, the selection counts from 0
/// and is about to be replaced by the key.
/// The result is the key to use: digits and control codes (backspace, clipboard keys) pass; the comma and the point
/// both give a comma, once per text; everything else gives 0.
int FilterEuroKey(int key, const QString& text, int selectionStart, int selectionLength);

}  // namespace host
