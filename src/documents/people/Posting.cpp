#include "documents/people/Posting.h"

#include "platform/text/FoldForSearch.h"

#include <QHash>
#include <QLocale>
#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

struct ShortForm {
  QStringView shortForm;
  QStringView word;
};

constexpr std::array streetForms{
    ShortForm{u"c", u"calle"},        ShortForm{u"cl", u"calle"},     ShortForm{u"av", u"avenida"},
    ShortForm{u"avd", u"avenida"},    ShortForm{u"avda", u"avenida"}, ShortForm{u"pl", u"plaza"},
    ShortForm{u"pza", u"plaza"},      ShortForm{u"plza", u"plaza"},   ShortForm{u"p", u"paseo"},
    ShortForm{u"ctra", u"carretera"}, ShortForm{u"cno", u"camino"}};

bool IsBlank(const QString& text) {
  return text.trimmed().isEmpty();
}

bool IsPostcode(const QString& text) {
  constexpr qsizetype digits = 5;
  return text.size() == digits && std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// Words and numbers alone: "3.º B", "3º b" and "3B" are the same floor and door.
QStringList Words(QString text) {
  static const QRegularExpression other(u"[^\\p{L}\\p{N}]+"_s);
  static const QRegularExpression betweenNumberAndLetter(u"(?<=\\d)(?=\\p{L})|(?<=\\p{L})(?=\\d)"_s);
  text.remove(u'º').remove(u'ª').remove(u'°').remove(u'\'').remove(u'’');
  text = texts::FoldForSearch(text).replace(betweenNumberAndLetter, u" "_s);
  return text.split(other, Qt::SkipEmptyParts);
}

QString StreetKey(const QString& street) {
  QStringList words = Words(street);
  if (!words.isEmpty()) {
    const auto known =
        std::ranges::find(streetForms, words.first(), [](const ShortForm& form) { return form.shortForm; });
    if (known != streetForms.end()) {
      words.first() = known->word.toString();
    }
  }
  // "n.º 12" is 12.
  static const QStringList numberSigns = {u"n"_s, u"no"_s, u"num"_s, u"numero"_s};
  for (qsizetype i = words.size() - 2; i > 0; --i) {
    if (numberSigns.contains(words[i]) && words[i + 1].front().isDigit()) {
      words.removeAt(i);
    }
  }
  return words.join(u' ');
}

/// Empty where there is no address.
QString AddressKey(const PostalAddress& address) {
  const QString street = StreetKey(address.street);
  const QString town = Words(address.town).join(u' ');
  if (street.isEmpty() || town.isEmpty()) {
    return {};
  }
  const QString country = address.isAbroad ? texts::FoldForSearch(address.country.trimmed()) : QString();
  return QStringList{street, Words(address.postcode).join(QString()), town, country}.join(u'\n');
}

}  // namespace

QString PrintedProvince(const PostalAddress& address) {
  return address.isAbroad ? QString() : address.province;
}

QString PrintedCountry(const PostalAddress& address) {
  return address.isAbroad ? QLocale(QLocale::Spanish).toUpper(address.country) : QString();
}

Posting PostingOf(const PostalAddress& address) {
  if (IsBlank(address.street) || IsBlank(address.town) || (!address.isAbroad && IsBlank(address.postcode))) {
    return Posting::Impossible;
  }
  const QString postcode = address.postcode.trimmed();
  const bool isDoubtful = !address.isAbroad && (!IsPostcode(postcode) || !postcode.startsWith(address.provincePrefix));
  return isDoubtful ? Posting::Doubtful : Posting::Good;
}

QList<QList<int>> Households(const QList<Person>& people) {
  QList<QList<int>> households;
  QHash<QString, qsizetype> known;
  for (int i = 0; i < people.size(); ++i) {
    const QString key = AddressKey(people[i].address);
    const auto home = key.isEmpty() ? known.constEnd() : known.constFind(key);
    if (home != known.constEnd()) {
      households[*home].append(i);
      continue;
    }
    if (!key.isEmpty()) {
      known.insert(key, households.size());
    }
    households.append(QList<int>{i});
  }
  return households;
}

}  // namespace documents
