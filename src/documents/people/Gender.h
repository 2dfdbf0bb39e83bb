#pragma once

#include "documents/Export.h"
#include "documents/people/Person.h"

namespace documents {

/// How somebody is addressed. Several people are addressed in the plural.
enum class Gender { Unknown, Man, Woman, Several };

/// By the title ("D.ª", "Sor", "Excmo. y Rvdmo. Sr. D."); where that says nothing, by the kind of the person's heading
/// ("Religiosa"). A title with both forms ("D./D.ª") says nothing.
KELDOCUMENTOS_EXPORT Gender GenderOf(const Person& person);

}  // namespace documents
