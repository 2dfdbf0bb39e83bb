#include "letters/editor/FieldMenu.h"

#include "letters/editor/MergeFields.h"
#include "resources/StringTable.h"

#include <QMenuBar>
#include <QPointer>

using resources::LoadResString;
using namespace Qt::StringLiterals;

namespace letters {

namespace {

// Whoever opens the menu from outside finds it by its place in the bar.
constexpr int placeInBar = 5;

QString Number(int stringId) {
  return QString::number(stringId);
}

}  // namespace

FieldMenu::FieldMenu(QMenuBar* bar) : QMenu(Number(3022), bar) {
  setObjectName(u"mnuCampos"_s);
  menuAction()->setObjectName(objectName());
  bar->insertMenu(bar->actions().value(placeInBar), this);
  menuAction()->setVisible(false);
  QMenu* submenu = this;
  for (const FieldItem& item : FieldItems()) {
    QMenu* menu = item.inSubmenu ? submenu : this;
    QAction* action = nullptr;
    switch (item.kind) {
      case FieldItem::Kind::Submenu:
        submenu = addMenu(Number(item.caption));
        submenu->setObjectName(item.name);
        action = submenu->menuAction();
        break;
      case FieldItem::Kind::Separator:
        action = menu->addSeparator();
        break;
      case FieldItem::Kind::Marker:
        action = menu->addAction(Number(item.caption), this,
                                 [this, item] { Q_EMIT MarkerChosen(item.marker, item.velumarMarker); });
        break;
      case FieldItem::Kind::Cut:
        action = menu->addAction(Number(item.caption), this, &FieldMenu::CutChosen);
        break;
      case FieldItem::Kind::Copy:
        action = menu->addAction(Number(item.caption), this, &FieldMenu::CopyChosen);
        break;
      case FieldItem::Kind::Paste:
        action = menu->addAction(Number(item.caption), this, &FieldMenu::PasteChosen);
        break;
    }
    action->setObjectName(item.name);
  }
}

void FieldMenu::ShapeNames(bool onlyFullNames) {
  if (!onlyFullNames) {
    return;
  }
  for (const char16_t* name : {u"mnuEmergenteNombre", u"mnuEmergenteApellidos", u"mnuEmergenteNombreCompleto2"}) {
    Item(name)->setVisible(false);
  }
  constexpr QStringView fullName = u"mnuEmergenteNombreCompleto";
  SetCaption(fullName, LoadResString(3142) + Item(fullName)->text());
}

void FieldMenu::ShapeInstallation(bool velumar) {
  if (velumar) {
    for (const char16_t* name : {u"mnuEmergenteEncabezado", u"mnEmergenteTextoRecibo", u"mnuEmergenteSep6"}) {
      Item(name)->setVisible(false);
    }
    return;
  }
  for (const char16_t* name : {u"mnuEmergenteSep5", u"mnuEmergenteDatosSuscripcion"}) {
    Item(name)->setVisible(false);
  }
  SetCaption(u"mnuEmergenteFinalidadDonativo", LoadResString(3143));
  SetCaption(u"mnuEmergenteImporteDonativo", LoadResString(3144));
  SetCaption(u"mnEmergentePeriodicidadDonativo", LoadResString(3145));
  SetCaption(u"mnEmergenteFechaDonativo", LoadResString(3146));
}

QList<QAction*> FieldMenu::Fields() const {
  QList<QAction*> fields;
  for (const FieldItem& item : FieldItems()) {
    QAction* action = Item(item.name);
    const auto* menu = static_cast<QMenu*>(action->parent());
    // This menu itself is shown only while it is open.
    const bool isOffered = action->isVisible() && (menu == this || menu->menuAction()->isVisible());
    if (item.kind == FieldItem::Kind::Marker && isOffered) {
      fields.append(action);
    }
  }
  return fields;
}

void FieldMenu::Track(const QPoint& at) {
  const QPointer<FieldMenu> alive(this);
  // Without a title it takes no room in the menu bar while it is open.
  setTitle(QString());
  menuAction()->setVisible(true);
  exec(at);
  if (alive) {
    menuAction()->setVisible(false);
  }
}

QAction* FieldMenu::Item(QStringView name) const {
  return findChild<QAction*>(name.toString());
}

void FieldMenu::SetCaption(QStringView name, const QString& caption) {
  Item(name)->setText(caption);
}

}  // namespace letters
