#pragma once

#include <QString>

namespace documents {

/// Where somebody's mail goes, as it is stored.
struct PostalAddress {
  QString street;  ///< With number, floor and door.
  QString postcode;
  QString town;
  QString province;
  QString provincePrefix;  ///< The first two digits of the province's postcodes; empty where it has none.
  QString country;
  bool isAbroad = false;

  bool operator==(const PostalAddress&) const = default;
};

/// Somebody who gets letters: a person, or what stands in the place of one (a parish, a company).
struct Person {
  int id = 0;
  QString title;  ///< "D.ª"
  QString firstName;
  QString surname;
  QString secondSurname;
  QString taxNumber;
  QString heading;      ///< The salutation chosen for the person, with both forms where it has them.
  QString headingKind;  ///< What kind of person that is for: "Religiosa".
  PostalAddress address;
};

}  // namespace documents
