#pragma once

#include "documents/Export.h"
#include "documents/markers/Markers.h"

#include <QList>

namespace documents {

/// What one letter is for: somebody, a donation, a subscription, or somebody's donations of one type in a year, since
/// the percentages of the annual return belong to a type.
enum class Subject { Person, Donation, Subscription, TaxReturn };

/// What a letter with these markers may be for. None where they are of two kinds. Two in a `velumar` installation,
/// whose letters write donations with the markers of subscriptions.
KELDOCUMENTOS_EXPORT QList<Subject> SubjectsOf(const QList<Marker>& markers, bool velumar);

/// The kind of letter that a marker asks for in other installations.
KELDOCUMENTOS_EXPORT Subject SubjectOf(Marker marker);

/// Whether the marker may stand in a letter to several people at one address: it says nothing of one of them alone.
KELDOCUMENTOS_EXPORT bool IsForAll(Marker marker);

}  // namespace documents
