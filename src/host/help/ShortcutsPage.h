#pragma once

#include <QString>

class QMenuBar;

namespace host {

/// A page of the manual with the keys of all items of the menus, as they are now.
QString ShortcutsPage(const QMenuBar& menus);

}  // namespace host
