#include "remittances/NationalIdentity.h"

#include "framework/KeyFilter.h"

#include <algorithm>

using namespace framework;

namespace remittances {
namespace {

constexpr qsizetype numberLength = 8;

bool IsNumber(const QString& text) {
  return !text.isEmpty() && text.size() <= numberLength && std::ranges::all_of(text, IsDigit);
}

}  // namespace

QString WithEightDigits(const QString& text) {
  return IsNumber(text) ? text.rightJustified(numberLength, u'0') : text;
}

QChar NationalIdentityLetter(const QString& text) {
  constexpr QStringView letters = u"TRWAGMYFPDXBNJZSQVHLCKE";
  return IsNumber(text) && text.size() == numberLength ? letters[text.toInt() % letters.size()] : QChar();
}

}  // namespace remittances
