#include "host/mailing/selection/PeopleList.h"

#include "documents/people/Names.h"
#include "platform/text/FoldForSearch.h"

using namespace Qt::StringLiterals;

using documents::Person;
using documents::Posting;

namespace host {

namespace {

ListedPerson Listed(const Person& person) {
  const documents::PostalAddress& address = person.address;
  const Posting posting = documents::PostingOf(address);
  ListedPerson listed;
  listed.id = person.id;
  listed.name = documents::LastNameFirst(person);
  listed.postcode = address.postcode;
  listed.town = address.isAbroad ? u"%1 (%2)"_s.arg(address.town, address.country) : address.town;
  listed.missing = posting == Posting::Impossible ? WhatIsMissing(address) : QString();
  listed.doubt = DoubtAbout(address);
  listed.isAbroad = address.isAbroad;
  listed.folded = texts::FoldForSearch(
      QStringList{listed.name, listed.postcode, listed.town, address.street, QString::number(person.id)}.join(u' '));
  return listed;
}

}  // namespace

std::vector<ListedPerson> ListPeople(adodb::Connection& connection, const SavedSelection& selection,
                                     PeopleOrder order) {
  SavedSelection everybody = selection;
  everybody.onlyTaken = false;
  everybody.people.removeIf([](const auto& person) { return !person.value(); });
  const std::vector<Person> people = ReadPeople(connection, everybody, order);
  std::vector<ListedPerson> list;
  list.reserve(people.size());
  for (const Person& person : people) {
    list.push_back(Listed(person));
  }
  for (const QList<int>& household : documents::Households({people.begin(), people.end()})) {
    for (const int member : household) {
      list[static_cast<std::size_t>(member)].shares = household.size() > 1;
    }
  }
  return list;
}

}  // namespace host
