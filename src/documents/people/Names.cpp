#include "documents/people/Names.h"

#include "platform/text/FoldForSearch.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

QString Joined(const QStringList& words) {
  return words.join(u' ').simplified();
}

/// Before the sound of an i "y" is "e": "Luis e Inés", "padre e hijo", but "agua y hielo".
QString And(const QString& next) {
  static const QRegularExpression soundsLikeI(u"^h?i(?![aeou])"_s);
  return soundsLikeI.match(texts::FoldForSearch(next)).hasMatch() ? u" e "_s : u" y "_s;
}

QString Pair(const Person& first, const Person& second) {
  const QString surnames = Surnames(first);
  const bool sameSurnames =
      !surnames.isEmpty() && texts::FoldForSearch(surnames) == texts::FoldForSearch(Surnames(second));
  const QString other = TitledName(second);
  const QString one = sameSurnames ? Joined({first.title, first.firstName}) : TitledName(first);
  return one + And(other) + other;
}

}  // namespace

QString Surnames(const Person& person) {
  return Joined({person.surname, person.secondSurname});
}

QString FullName(const Person& person) {
  return Joined({person.firstName, person.surname, person.secondSurname});
}

QString TitledName(const Person& person) {
  return Joined({person.title, FullName(person)});
}

QString LastNameFirst(const Person& person) {
  const QString surnames = Surnames(person);
  const QString firstName = person.firstName.simplified();
  return surnames.isEmpty() || firstName.isEmpty() ? surnames + firstName : surnames + u", "_s + firstName;
}

QStringList JointName(const QList<Person>& people) {
  constexpr qsizetype mostNamed = 4;
  const Person& first = people.constFirst();
  if (people.size() == 1) {
    return {TitledName(first)};
  }
  if (people.size() == 2) {
    return {Pair(first, people[1])};
  }
  if (people.size() > mostNamed) {
    return {TitledName(first) + u" y familia"_s};
  }
  const QString last = TitledName(people.constLast());
  const QString before = people.size() == mostNamed ? TitledName(people[2]) : QString();
  return {TitledName(first) + u", "_s + TitledName(people[1]) + (before.isEmpty() ? QString() : u","_s),
          (before + And(last) + last).trimmed()};
}

QStringList NarrowJointName(const QList<Person>& people) {
  if (people.size() != 2) {
    return JointName(people);
  }
  const QString second = TitledName(people[1]);
  return {TitledName(people[0]), (And(second) + second).trimmed()};
}

}  // namespace documents
