#include "documents/people/Salutation.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

constexpr qsizetype longestEnding = 2;
constexpr qsizetype shortestWord = 3;

bool IsVowel(QChar c) {
  return QStringView(u"aeiouáéíóú").contains(c.toLower());
}

QString Feminine(const QString& word, const QString& ending) {
  if (!IsVowel(word.back()) && word.back().toLower() != u's') {
    // "Profesor/ra" repeats the word's last letter.
    return ending.front() == word.back() ? word + ending.mid(1) : word + ending;
  }
  qsizetype vowel = word.size() - 1;
  while (vowel > 0 && !IsVowel(word[vowel])) {
    --vowel;
  }
  // So does "Querido/da".
  const bool repeats = vowel > 0 && word[vowel - 1] == ending.front();
  return word.left(repeats ? vowel - 1 : vowel) + ending;
}

QString Plural(const QString& word) {
  if (word.back().toLower() == u's') {
    return word;
  }
  const QString ending = IsVowel(word.back()) ? u"s"_s : u"es"_s;
  return word + (word.back().isUpper() ? ending.toUpper() : ending);
}

QString Chosen(const QString& word, const QString& other, Gender gender) {
  const bool isEnding = other.size() <= longestEnding && !other.endsWith(u'.');
  if (isEnding && word.size() < shortestWord) {
    return word + u'/' + other;
  }
  if (gender == Gender::Man) {
    return word;
  }
  if (gender == Gender::Woman) {
    return isEnding ? Feminine(word, other) : other;
  }
  return isEnding ? Plural(word) : word + u'/' + other;
}

}  // namespace

QString Salutation(const QString& heading, Gender gender) {
  if (gender == Gender::Unknown) {
    return heading;
  }
  static const QRegularExpression bothForms(uR"((\p{L}+\.?)/(\p{L}+\.?))"_s);
  QString result;
  qsizetype end = 0;
  for (auto at = bothForms.globalMatch(heading); at.hasNext();) {
    const QRegularExpressionMatch match = at.next();
    result += QStringView(heading).mid(end, match.capturedStart() - end);
    result += Chosen(match.captured(1), match.captured(2), gender);
    end = match.capturedEnd();
  }
  return result + heading.mid(end);
}

}  // namespace documents
