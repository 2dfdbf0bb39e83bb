#include "host/desktop/RecentMenu.h"

#include "database/Place.h"
#include "host/desktop/RecentDatabases.h"
#include "platform/text/AsItStands.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostShown = 10;
// In characters, from the end, where the file's name is.
constexpr qsizetype longestShown = 70;

// The tenth is 0. What menus take for marks is shown as it stands.
QString ItemText(int number, const QString& shown) {
  QString name = shown.simplified();
  if (name.size() > longestShown) {
    name = QChar(0x2026) + name.right(longestShown);
  }
  return u"&%1  %2"_s.arg(number % mostShown).arg(name.replace(u'&', u"&&"_s));
}

}  // namespace

RecentMenu::RecentMenu(QString current, QWidget* parent)
    : QMenu(u"Abrir re&ciente"_s, parent), m_current(std::move(current)) {
  setObjectName(u"mnuRecent"_s);
  setToolTipsVisible(true);
  connect(this, &QMenu::aboutToShow, this, &RecentMenu::Fill);
}

void RecentMenu::Fill() {
  clear();
  RecentDatabases recent = TakeRecentDatabases();
  recent.strings.removeAll(m_current);
  for (const QString& each : recent.strings.mid(0, mostShown)) {
    const QString shown = database::PlaceOf(each).shown;
    QAction* action = addAction(ItemText(static_cast<int>(actions().size()) + 1, shown), this,
                                [this, each] { Q_EMIT DatabaseWanted(each); });
    action->setToolTip(texts::AsItStands(shown));
  }
  if (recent.strings.isEmpty()) {
    addAction(u"No hay otras"_s)->setEnabled(false);
  }
  if (recent.gone > 0) {
    addSeparator();
    addAction(GoneText(recent.gone))->setEnabled(false);
  }
}

}  // namespace host
