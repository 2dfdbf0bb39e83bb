#pragma once

#include <QString>
#include <QStringList>

/// Passwords and what is kept of them: Argon2id by libsodium (`crypto_pwhash_str`), RFC 9106, with 64 MiB in 3 passes.
/// A hash is a text that says its own parameters, so that they can be raised later.
///
/// A password is a text of any characters. Two that look the same are the same (composed or with combining marks,
/// blanks of any kind): it is prepared as "OpaqueString" of RFC 8265 says, by Unicode's form NFC.
namespace host {

constexpr int shortestPassword = 8;  ///< In characters, as all of these.
constexpr int longestPassword = 200;

/// Why a password can't be chosen, as a sentence that says what to do; empty where it can. Refused are too short and
/// too long ones, control characters, keys in the order of the keyboard or again and again, and the names of `names`
/// (the user's, the office's) with nothing but digits and signs around them.
QString PasswordFault(const QString& password, const QStringList& names);

/// What is kept of a password. Takes 50 to 250 ms and 64 MiB: not for the window's thread. Raises 7
/// where there is no memory.
QString HashOf(const QString& password);

enum class PasswordVerdict {
  Right,
  Wrong,
  Unusable,  ///< What is kept is no hash, or one that this program does not compute: nobody gets in by it.
};

/// Whether `password` is the one that `hash` was made of. As long as HashOf; at once for an unusable hash, whose
/// parameters are never tried. Raises as HashOf.
PasswordVerdict CheckPassword(const QString& password, const QString& hash);

/// Takes the time of a check, for a name that has no hash.
void PretendToCheck(const QString& password);

/// Whether a right password should be hashed anew, with today's parameters.
bool IsOutdated(const QString& hash);

}  // namespace host
