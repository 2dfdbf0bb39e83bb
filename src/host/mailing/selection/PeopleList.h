#pragma once

#include "documents/people/Posting.h"
#include "host/mailing/selection/Addressees.h"

#include <QString>

#include <vector>

namespace host {

/// Somebody in the list from which people are chosen.
struct ListedPerson {
  int id = 0;
  QString name;  ///< "Pérez Gil, Ana"
  QString postcode;
  QString town;     ///< Abroad with the country: "Lisboa (Portugal)".
  QString missing;  ///< What keeps mail from the address; empty for nothing.
  QString doubt;    ///< What looks wrong with an address that mail goes to.
  bool isAbroad = false;
  bool shares = false;  ///< The address is that of somebody else of the list, too.
  QString folded;       ///< As searches compare it.
};

/// Everybody who can be ticked: who meets the conditions or was taken by hand, whoever was left out among them; without
/// conditions everybody.
std::vector<ListedPerson> ListPeople(adodb::Connection& connection, const SavedSelection& selection, PeopleOrder order);

}  // namespace host
