#pragma once

#include "documents/Export.h"
#include "documents/people/Person.h"

#include <QList>

/// What mail makes of an address. Order of an address at home: the Spanish operator's. Abroad the country stands as the
/// sender's country writes it, in capitals and last, the rest as the addressee's does (Universal Postal Union).
namespace documents {

/// The province as it is printed: none abroad.
KELDOCUMENTOS_EXPORT QString PrintedProvince(const PostalAddress& address);
/// The country as it is printed: in capitals, none at home.
KELDOCUMENTOS_EXPORT QString PrintedCountry(const PostalAddress& address);

enum class Posting {
  Good,
  Doubtful,    ///< A postcode at home that is not five digits, or another province's.
  Impossible,  ///< No street, no town, or at home no postcode; blanks are none.
};
KELDOCUMENTOS_EXPORT Posting PostingOf(const PostalAddress& address);

/// Who lives at one address: for each address the positions of its people, in their order; addresses in the order of
/// their first. Compared without regard to case, accents, punctuation and the usual short forms ("C/" is "Calle").
/// Whoever has no address lives alone.
KELDOCUMENTOS_EXPORT QList<QList<int>> Households(const QList<Person>& people);

}  // namespace documents
