#include "host/look/Look.h"

#include "host/look/Colours.h"
#include "host/look/Icons.h"
#include "host/look/Palettes.h"
#include "host/look/SmallScreens.h"
#include "host/look/Style.h"
#include "host/look/TitleSize.h"

#include <QApplication>
#include <QFont>
#include <QPointer>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// As the desktop has them: read before the first look is used.
struct Desktop {
  bool isDark = IsDark(QApplication::palette());
  QFont font = QApplication::font();
};

const Desktop& TheDesktop() {
  static const Desktop desktop;
  return desktop;
}

}  // namespace

Look StoredLook() {
  const QSettings settings;
  Look look;
  const int percent = settings.value(u"Aspecto/Texto"_s, look.textPercent).toInt();
  if (percent >= Look::smallestText && percent <= Look::largestText) {
    look.textPercent = percent;
  }
  const QString colours = settings.value(u"Aspecto/Colores"_s).toString();
  if (colours == u"claros"_s) {
    look.colours = Look::Colours::Light;
  } else if (colours == u"oscuros"_s) {
    look.colours = Look::Colours::Dark;
  }
  return look;
}

void StoreLook(const Look& look) {
  QSettings settings;
  settings.setValue(u"Aspecto/Texto"_s, look.textPercent);
  const QString names[] = {u"escritorio"_s, u"claros"_s, u"oscuros"_s};
  settings.setValue(u"Aspecto/Colores"_s, names[static_cast<int>(look.colours)]);
}

void UseLook(const Look& look) {
  const Desktop& desktop = TheDesktop();
  const bool isDark = look.colours == Look::Colours::AsDesktop ? desktop.isDark : look.colours == Look::Colours::Dark;
  QApplication::setStyle(new Style);
  QApplication::setPalette(isDark ? DarkPalette() : LightPalette());
  UseIcons(isDark);
  QApplication::setFont(Enlarged(desktop.font, double(look.textPercent) / Look::smallestText));
  static QPointer<SmallScreens> smallScreens;
  if (!smallScreens) {
    smallScreens = new SmallScreens(qApp);
  }
}

}  // namespace host
