#pragma once

#include "documents/Export.h"
#include "documents/people/Gender.h"

#include <QString>

namespace documents {

/// A heading with both forms, in the form of a gender: "Estimado/a amigo/a:" is "Estimado amigo:", "Estimada amiga:",
/// "Estimados amigos:". What stands behind a slash is an ending of one or two letters ("Señor/a", "Queridos/as") or
/// a word of its own ("Sr./Sra."), which has no plural. For an unknown gender the heading stays as it is.
KELDOCUMENTOS_EXPORT QString Salutation(const QString& heading, Gender gender);

}  // namespace documents
