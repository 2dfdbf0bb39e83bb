#pragma once

#include "platform/adodb/Connection.h"

class QComboBox;
class QLineEdit;

/// A postcode box and a province combo that follow each other by the two-digit prefix of Provincias.Prefijo.
///
/// The prefix suggests and never insists, for some Spanish postcodes belong to the neighbouring province (26127 is in
/// Soria) and foreign ones to none. Errors of the database pass through; a postcode is never an error.
namespace host {

/// Selects the live province whose prefix equals the first two characters of the postcode, if the combo lists it.
/// A province that is selected already gives way only to a postcode that the user has typed since the last time, so
/// that an exception, once chosen, stays.
void SelectProvinceOfPostcode(QLineEdit& postcode, QComboBox& province, adodb::Connection& connection);

/// Puts the selected province's prefix in place of the postcode's first two digits, or into an empty box. A complete
/// postcode of five digits and one that does not begin with digits stay.
void SuggestPostcodeOfProvince(const QComboBox& province, QLineEdit& postcode, adodb::Connection& connection);

}  // namespace host
