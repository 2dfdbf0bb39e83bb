#pragma once

#include "documents/people/Person.h"
#include "host/mailing/selection/SavedSelection.h"
#include "platform/adodb/Connection.h"

#include <QList>
#include <QStringList>

#include <optional>
#include <vector>

namespace host {

enum class PeopleOrder { Surname, Postcode, Number };

/// Who gets a piece of mail, and how many pieces.
struct MailingWish {
  QString selection;                     ///< The name of a saved one.
  std::optional<SavedSelection> chosen;  ///< In its place.
  PeopleOrder order = PeopleOrder::Surname;
  bool onePerAddress = false;
  bool withoutAddressToo = false;  ///< Also who can't get mail.
};

/// One piece's people: several only where they live together and share it. Never empty.
using Addressee = QList<documents::Person>;

inline bool GoesAbroad(const Addressee& people) {
  return people.constFirst().address.isAbroad;
}

/// What there is to say of one person.
struct PersonNote {
  int person = 0;
  QString name;    ///< As NameInLists has it.
  QString reason;  ///< "sin dirección"
};

/// What the user is told of a mailing before it is made; personal data stands in it.
struct MailingNotes {
  QList<PersonNote> leftOut;   ///< Who gets nothing, and why.
  QList<PersonNote> doubtful;  ///< What is printed although it looks wrong.
  QStringList remarks;         ///< The same of the letter, in sentences.
  int abroad = 0;              ///< How many letters or labels go abroad.
};

/// "Pérez Gil, Ana (123): sin dirección"
QStringList Sentences(const QList<PersonNote>& notes);

/// Who the wish means; see ReadSelection for what it raises.
SavedSelection SelectionOf(adodb::Connection& connection, const MailingWish& wish, int userId);

/// Everybody of the selection in the wished order.
std::vector<documents::Person> ReadPeople(adodb::Connection& connection, const SavedSelection& selection,
                                          PeopleOrder order);

/// The people of the wish who can get mail, joined where that is wished; a shared address stands where the first of it
/// stands.
std::vector<Addressee> AddresseesOf(const std::vector<documents::Person>& people, const MailingWish& wish,
                                    MailingNotes& notes);

/// What keeps mail from an address that can't be posted: "sin población".
QString WhatIsMissing(const documents::PostalAddress& address);

/// What looks wrong with an address that mail goes to: "código postal dudoso, «2812»"; empty for nothing.
QString DoubtAbout(const documents::PostalAddress& address);

/// "Pérez Gil, Ana (123)"
QString NameInLists(const documents::Person& person);

}  // namespace host
