#pragma once

#include "documents/people/Person.h"
#include "host/mailing/selection/SavedSelection.h"
#include "platform/adodb/Connection.h"

#include <QList>
#include <QStringList>

#include <vector>

namespace host {

enum class PeopleOrder { Surname, Postcode, Number };

/// Who gets a piece of mail, and how many pieces.
struct MailingWish {
  QString selection;
  PeopleOrder order = PeopleOrder::Surname;
  bool onePerAddress = false;
  bool withoutAddressToo = false;  ///< Also who can't get mail.
};

/// One piece's people: several only where they live together and share it. Never empty.
using Addressee = QList<documents::Person>;

/// What the user is told of a mailing before it is made, in sentences; personal data stands in it.
struct MailingNotes {
  QStringList leftOut;   ///< Who gets nothing, and why.
  QStringList doubtful;  ///< What is printed although it looks wrong.
};

/// Everybody of the selection in the wished order.
std::vector<documents::Person> ReadPeople(adodb::Connection& connection, const SavedSelection& selection,
                                          PeopleOrder order);

/// The people of the wish who can get mail, joined where that is wished; a shared address stands where the first of it
/// stands.
std::vector<Addressee> AddresseesOf(const std::vector<documents::Person>& people, const MailingWish& wish,
                                    MailingNotes& notes);

/// "Pérez Gil, Ana (123)"
QString NameInLists(const documents::Person& person);

}  // namespace host
