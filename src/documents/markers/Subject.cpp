#include "documents/markers/Subject.h"

#include <algorithm>

namespace documents {

namespace {

/// Written for donations, too, where there is `velumar`.
bool IsShared(Marker marker) {
  return marker >= Marker::SubscriptionPurpose && marker <= Marker::SubscriptionDate;
}

bool Allows(Subject subject, Marker marker, bool velumar) {
  const Subject own = SubjectOf(marker);
  return own == Subject::Person || own == subject || (velumar && subject == Subject::Donation && IsShared(marker));
}

}  // namespace

Subject SubjectOf(Marker marker) {
  if (marker < Marker::DonationPurpose) {
    return Subject::Person;
  }
  if (marker < Marker::SubscriptionPurpose) {
    return Subject::Donation;
  }
  return marker < Marker::TaxFormPurpose ? Subject::Subscription : Subject::TaxReturn;
}

QList<Subject> SubjectsOf(const QList<Marker>& markers, bool velumar) {
  QList<Subject> subjects;
  for (const Subject subject : {Subject::Person, Subject::Donation, Subject::Subscription, Subject::TaxReturn}) {
    const auto allows = [&](Marker marker) { return Allows(subject, marker, velumar); };
    if (std::ranges::all_of(markers, allows)) {
      subjects.append(subject);
    }
  }
  // Whoever asks for a person's data alone means a person.
  return subjects.contains(Subject::Person) ? QList<Subject>{Subject::Person} : subjects;
}

bool IsForAll(Marker marker) {
  switch (marker) {
    case Marker::FirstName:
    case Marker::LastName:
    case Marker::LastNameFirst:
    case Marker::TaxNumber:
    case Marker::Reference:
      return false;
    default:
      return SubjectOf(marker) == Subject::Person;
  }
}

}  // namespace documents
