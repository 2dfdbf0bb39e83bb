#pragma once

#include <QString>

namespace host {

/// What a user may do, the least first. The numbers are stored.
enum class Rights {
  Viewer = 1,             ///< Looks at everything and changes nothing.
  Changes = 2,            ///< Adds and changes; records are not deleted from the lists.
  ChangesAndDeletes = 3,  ///< What an office's usual user may.
  Administrator = 4,      ///< Also users, settings for all, other people's locks.
};

/// "Solo consulta", "Cambia, no elimina", ...
QString RightsText(Rights rights);

}  // namespace host
