#pragma once

#include "documents/Export.h"

#include <QStringList>

#include <optional>

/// The bracketed words of a letter that are replaced with a person's data when it is printed.
namespace documents {

enum class Marker {
  Title,
  FirstName,
  LastName,
  FullName,
  LastNameFirst,
  TaxNumber,
  Reference,
  Street,
  Town,
  Province,
  Postcode,
  Country,
  Heading,
  Date,
  LongDate,
  DateAndTime,
  DonationPurpose,
  DonationAmount,
  DonationPeriod,
  DonationDate,
  ReceiptText,
  SubscriptionPurpose,
  SubscriptionAmount,
  SubscriptionPeriod,
  SubscriptionDate,
  Publication,
  SubscriptionReceiver,
  TaxFormPurpose,
  TaxFormTotal,
  PersonDeduction,
  CompanyDeduction,
};

inline constexpr int markerCount = int(Marker::CompanyDeduction) + 1;

/// The marker as it stands in a letter, with its brackets.
KELDOCUMENTOS_EXPORT QString TextOf(Marker marker);

/// The marker that is written so, to the character; nothing for any other text.
KELDOCUMENTOS_EXPORT std::optional<Marker> MarkerOf(QStringView text);

/// The bracketed words of a text that are no markers, each once, in their order. A bracket that is not closed in its
/// paragraph begins no word.
KELDOCUMENTOS_EXPORT QStringList UnknownMarkers(const QString& text);

}  // namespace documents
