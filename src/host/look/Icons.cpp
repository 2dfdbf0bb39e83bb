#include "host/look/Icons.h"

#include <QIcon>

using namespace Qt::StringLiterals;

namespace host {

void UseIcons(bool onDark) {
  static const bool desktopHasTheme = !QIcon::themeName().isEmpty();
  const QString theme = onDark ? u"breeze-dark"_s : u"breeze"_s;
  QIcon::setFallbackThemeName(theme);
  // Without a theme of the desktop's own no fallback is looked for.
  if (!desktopHasTheme) {
    QIcon::setThemeName(theme);
  }
}

}  // namespace host
