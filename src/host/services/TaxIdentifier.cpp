#include "host/services/TaxIdentifier.h"

#include <QRegularExpression>

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
  if (plain.startsWith(QStringLiteral("ES"))) {
    plain.remove(0, 2);
  }
  return plain;
}

// DNI and NIE are printed with leading zeros that many people leave out. Below this length it is no longer clear
// that an identifier is meant.
QString WithLeadingZeros(const QString& plain) {
  static const QRegularExpression shortDni(QStringLiteral("\\A[0-9]{5,7}[A-Z]\\z"));
  static const QRegularExpression shortNie(QStringLiteral("\\A[XYZ][0-9]{4,6}[A-Z]\\z"));
  if (shortDni.match(plain).hasMatch()) {
    return plain.rightJustified(9, u'0');
  }
  if (shortNie.match(plain).hasMatch()) {
    return plain[0] + plain.mid(1).rightJustified(8, u'0');
  }
  return plain;
}

QChar LetterOf(int number) {
  return QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKE")[number % 23];
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
  const bool letterOnly = QStringLiteral("NPQRSW").contains(first) || cif.sliced(1).startsWith(u"00");
  if (letterOnly) {
    return letter;
  }
  const bool digitOnly = QStringLiteral("ABEH").contains(first);
  return digitOnly || cif.back().isDigit() ? digit : letter;
}

void CheckCif(TaxIdentifier& identifier) {
  const QString& cif = identifier.normalised;
  identifier.kind = TaxIdentifierKind::Cif;
  if (!QStringLiteral("ABCDEFGHJNPQRSUVW").contains(cif[0])) {
    identifier.verdict = TaxIdentifierVerdict::InvalidFirstLetter;
    return;
  }
  const int check = CifCheckDigit(QStringView(cif).sliced(1, 7));
  const QChar digit = QChar(u'0' + check);
  const QChar letter = QStringLiteral("JABCDEFGHI")[check];
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
  const bool person = plain.isEmpty() || !plain[0].isLetter() || QStringLiteral("XYZKLM").contains(plain[0]);
  return person ? TaxIdentifierKind::Nif : TaxIdentifierKind::Cif;
}

}  // namespace

TaxIdentifier CheckTaxIdentifier(QStringView text) {
  static const QRegularExpression dni(QStringLiteral("\\A[0-9]{8}.\\z"));
  static const QRegularExpression nie(QStringLiteral("\\A[XYZ][0-9]{7}.\\z"));
  static const QRegularExpression special(QStringLiteral("\\A[KLM][0-9]{7}.\\z"));
  static const QRegularExpression cif(QStringLiteral("\\A[A-Z][0-9]{7}[0-9A-Z]\\z"));

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
      return QStringLiteral("NIE");
    case TaxIdentifierKind::Cif:
      return QStringLiteral("CIF");
    case TaxIdentifierKind::Nif:
      break;
  }
  return QStringLiteral("NIF");
}

}  // namespace host
