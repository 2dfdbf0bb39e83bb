#include "host/services/TaxIdentifier.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace host {
namespace {

// Longer than any identifier with the marks that people put into one.
constexpr qsizetype mostCharacters = 64;

QString Normalised(QStringView text) {
  QString plain;
  for (const QChar c : text.first(qMin(text.size(), mostCharacters))) {
    const bool mark = c.isSpace() || c.category() == QChar::Punctuation_Dash || c == u'.' || c == u'/';
    if (!mark) {
      plain.append(c.toUpper());
    }
  }
  if (plain.startsWith(u"ES"_s)) {
    plain.remove(0, 2);
  }
  return plain;
}

// DNI and NIE are printed with leading zeros that many people leave out. Below this length it is no longer clear
// that an identifier is meant.
QString WithLeadingZeros(const QString& plain) {
  static const QRegularExpression shortDni(u"\\A[0-9]{5,7}[A-Z]\\z"_s);
  static const QRegularExpression shortNie(u"\\A[XYZ][0-9]{4,6}[A-Z]\\z"_s);
  if (shortDni.match(plain).hasMatch()) {
    return plain.rightJustified(9, u'0');
  }
  if (shortNie.match(plain).hasMatch()) {
    return plain[0] + plain.mid(1).rightJustified(8, u'0');
  }
  return plain;
}

QChar LetterOf(int number) {
  return u"TRWAGMYFPDXBNJZSQVHLCKE"_s[number % 23];
}

int CifCheckDigit(QStringView digits) {
  int sum = 0;
  for (qsizetype i = 0; i < digits.size(); ++i) {
    const int digit = digits[i].digitValue();
    const int doubled = 2 * digit;
    sum += i % 2 == 0 ? doubled / 10 + doubled % 10 : digit;
  }
  return (10 - sum % 10) % 10;
}

// Names the check character that a CIF should carry when the one typed is wrong.
QChar CifControl(QStringView cif, QChar digit, QChar letter) {
  const QChar first = cif[0];
  const bool letterOnly = u"NPQRSW"_s.contains(first) || cif.sliced(1).startsWith(u"00");
  if (letterOnly) {
    return letter;
  }
  const bool digitOnly = u"ABEH"_s.contains(first);
  return digitOnly || cif.back().isDigit() ? digit : letter;
}

void CheckCif(TaxIdentifier& identifier) {
  const QString& cif = identifier.normalised;
  identifier.kind = TaxIdentifierKind::Cif;
  if (!u"ABCDEFGHJNPQRSUVW"_s.contains(cif[0])) {
    identifier.verdict = TaxIdentifierVerdict::InvalidFirstLetter;
    return;
  }
  const int check = CifCheckDigit(QStringView(cif).sliced(1, 7));
  const QChar digit = QChar(u'0' + check);
  const QChar letter = u"JABCDEFGHI"_s[check];
  if (cif.back() == digit || cif.back() == letter) {
    identifier.control = cif.back();
    identifier.verdict = TaxIdentifierVerdict::Valid;
  } else {
    identifier.control = CifControl(cif, digit, letter);
    identifier.verdict = TaxIdentifierVerdict::WrongCheckCharacter;
  }
}

void CheckNumber(TaxIdentifier& identifier, const QString& number) {
  const QChar letter = LetterOf(number.toInt());
  identifier.control = letter;
  identifier.verdict =
      identifier.normalised.back() == letter ? TaxIdentifierVerdict::Valid : TaxIdentifierVerdict::WrongCheckCharacter;
}

TaxIdentifierKind LikeliestKind(const QString& plain) {
  const bool person = plain.isEmpty() || !plain[0].isLetter() || u"XYZKLM"_s.contains(plain[0]);
  return person ? TaxIdentifierKind::Nif : TaxIdentifierKind::Cif;
}

}  // namespace

TaxIdentifier CheckTaxIdentifier(QStringView text) {
  static const QRegularExpression dni(u"\\A[0-9]{8}.\\z"_s);
  static const QRegularExpression nie(u"\\A[XYZ][0-9]{7}.\\z"_s);
  static const QRegularExpression special(u"\\A[KLM][0-9]{7}.\\z"_s);
  static const QRegularExpression cif(u"\\A[A-Z][0-9]{7}[0-9A-Z]\\z"_s);

  TaxIdentifier identifier;
  identifier.normalised = WithLeadingZeros(Normalised(text));
  const QString& plain = identifier.normalised;
  if (dni.match(plain).hasMatch()) {
    CheckNumber(identifier, plain.first(8));
  } else if (nie.match(plain).hasMatch()) {
    identifier.kind = TaxIdentifierKind::Nie;
    CheckNumber(identifier, QString::number(plain[0].unicode() - u'X') + plain.mid(1, 7));
  } else if (special.match(plain).hasMatch()) {
    CheckNumber(identifier, plain.mid(1, 7));
  } else if (cif.match(plain).hasMatch()) {
    CheckCif(identifier);
  } else {
    identifier.kind = LikeliestKind(plain);
  }
  return identifier;
}

QString KindName(TaxIdentifierKind kind) {
  switch (kind) {
    case TaxIdentifierKind::Nie:
      return u"NIE"_s;
    case TaxIdentifierKind::Cif:
      return u"CIF"_s;
    case TaxIdentifierKind::Nif:
      break;
  }
  return u"NIF"_s;
}

}  // namespace host
