#include "letters/editor/Commands.h"

#include <QAction>
#include <QIcon>
#include <QKeySequence>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

struct MenuRow {
  QString name;
  int caption;
  QString parent = {};  ///< Empty for one of the bar.
};

const QList<MenuRow>& Menus() {
  static const QList<MenuRow> menus{
      {u"mnuArchivo"_s, 3003}, {u"mnuEdición"_s, 3008},
      {u"mnuVer"_s, 3014},     {u"mnuVerBarraDeHerramientas"_s, 3015, u"mnuVer"_s},
      {u"mnuFormato"_s, 3017}, {u"mnuAyuda"_s, 3020},
  };
  return menus;
}

}  // namespace

/// A row may have a menu item, a tool button, or only a key. Rows stand in the order of both bars.
struct Commands::Row {
  Command command;
  QString menu = {};
  QString item = {};
  int caption = 0;
  QString bar = {};
  QString key = {};
  QString tip = {};
  QString icon = {};
  /// None for what the text box does by itself, wherever the focus is in it.
  QKeySequence shortcut = {};
  bool checkable = false;
};

const QList<Commands::Row>& Commands::Table() {
  const auto standard = u"tlbEstandar"_s;
  const auto format = u"tlbFormato"_s;
  const auto file = u"mnuArchivo"_s;
  const auto edit = u"mnuEdición"_s;
  const auto bars = u"mnuVerBarraDeHerramientas"_s;
  using enum Command;
  static const QList<Row> table{
      {Save, file, u"mnuArchivoGuardar"_s, 3004, standard, u"guardar"_s, u"Guardar"_s, u"document-save"_s,
       QKeySequence(u"Ctrl+S"_s)},
      {SaveAs, file, u"mnuArchivoGuardarComo"_s, 3005, {}, {}, {}, {}, QKeySequence(u"Ctrl+Shift+S"_s)},
      {Print, file, u"mnuArchivoImprimir"_s, 3006, standard, u"imprimir"_s, u"Imprimir"_s, u"document-print"_s,
       QKeySequence(u"Ctrl+P"_s)},
      {Exit, file, u"mnuArchivosalir"_s, 3007},
      {Undo, edit, u"mnuEdicionDeshacer"_s, 3009},
      {Cut, edit, u"mnuEdicionCortar"_s, 3010, standard, u"cortar"_s, u"Cortar"_s, u"edit-cut"_s},
      {Copy, edit, u"mnuEdicionCopiar"_s, 3011, standard, u"copiar"_s, u"Copiar"_s, u"edit-copy"_s},
      {Paste, edit, u"mnuEdicionPegar"_s, 3012, standard, u"pegar"_s, u"Pegar"_s, u"edit-paste"_s},
      {SelectAll, edit, u"mnuedicionseleccionartodo"_s, 3013},
      {Find, {}, {}, 0, standard, u"buscar"_s, u"Buscar"_s, u"edit-find"_s, QKeySequence(u"Ctrl+F"_s)},
      {Undo, {}, {}, 0, standard, u"deshacer"_s, u"Deshacer"_s, u"edit-undo"_s},
      {ShowStandardBar, bars, u"mnuVerBarraDeHerramientasEstandar"_s, 3016, {}, {}, {}, {}, {}, true},
      {ShowFormatBar, bars, u"mnuVerBarraDeHerramientasFormato"_s, 3017, {}, {}, {}, {}, {}, true},
      {Font, u"mnuFormato"_s, u"mnuFormatoFuente"_s, 3018},
      {Bold, {}, {}, 0, format, u"negrita"_s, u"Negrita"_s, u"format-text-bold"_s, QKeySequence(u"Ctrl+B"_s), true},
      {Italic, {}, {}, 0, format, u"cursiva"_s, u"Cursiva"_s, u"format-text-italic"_s, QKeySequence(u"Ctrl+I"_s), true},
      {Underline,
       {},
       {},
       0,
       format,
       u"subrayado"_s,
       u"Subrayado"_s,
       u"format-text-underline"_s,
       QKeySequence(u"Ctrl+U"_s),
       true},
      {Left, {}, {}, 0, format, u"left"_s, u"Alinear a la izquierda"_s, u"format-justify-left"_s, {}, true},
      {Centre, {}, {}, 0, format, u"center"_s, u"Centrar"_s, u"format-justify-center"_s, {}, true},
      {Right, {}, {}, 0, format, u"right"_s, u"Alinear a la derecha"_s, u"format-justify-right"_s, {}, true},
      {Justify, {}, {}, 0, format, u"Justify"_s, u"Justificar"_s, u"format-justify-fill"_s, {}, true},
      {Bullets, {}, {}, 0, format, u"desordenada"_s, u"Viñetas"_s, u"format-list-unordered"_s},
      // Intended: the key "indent" takes an indent away, "outdent" adds one.
      {IndentLess, {}, {}, 0, format, u"indent"_s, u"Disminuir sangría"_s, u"format-indent-less"_s},
      {IndentMore, {}, {}, 0, format, u"outdent"_s, u"Aumentar sangría"_s, u"format-indent-more"_s},
      {Colour, u"mnuFormato"_s, u"mnuformatoColorFuente"_s, 3019, format, u"color_letra"_s, u"Color de la fuente"_s,
       u"format-text-color"_s},
      {Help, u"mnuAyuda"_s, u"mnuAyudaContenido"_s, 3021},
      {Redo, {}, {}, 0, {}, {}, {}, {}, QKeySequence(u"Ctrl+Y"_s)},
      {FindAgain, {}, {}, 0, {}, {}, {}, {}, QKeySequence(u"F3"_s)},
      {CheckMarkers, {}, {}, 0, {}, {}, {}, {}, QKeySequence(u"F7"_s)},
  };
  return table;
}

Commands::Commands(QWidget* window, QMenuBar* menus, QToolBar* standard, QToolBar* format) : QObject(window) {
  FillMenus(menus);
  FillBar(standard);
  FillBar(format);
  AddKeys(window);
}

QAction* Commands::Connected(QAction* action, Command command) {
  connect(action, &QAction::triggered, this, [this, command] { Q_EMIT Triggered(command); });
  return action;
}

void Commands::FillMenus(QMenuBar* menus) {
  QHash<QString, QMenu*> byName;
  for (const MenuRow& row : Menus()) {
    const QString caption = QString::number(row.caption);
    QMenu* menu = row.parent.isEmpty() ? menus->addMenu(caption) : byName.value(row.parent)->addMenu(caption);
    menu->setObjectName(row.name);
    menu->menuAction()->setObjectName(row.name);
    byName.insert(row.name, menu);
  }
  for (const Row& row : Table()) {
    if (!row.item.isEmpty()) {
      QAction* item = Connected(byName.value(row.menu)->addAction(QString::number(row.caption)), row.command);
      item->setObjectName(row.item);
      item->setCheckable(row.checkable);
      item->setChecked(row.checkable);
      m_items.insert(row.command, item);
    }
  }
}

void Commands::FillBar(QToolBar* bar) {
  for (const Row& row : Table()) {
    if (row.bar != bar->objectName()) {
      continue;
    }
    QAction* action = Connected(bar->addAction(QIcon::fromTheme(row.icon), row.tip), row.command);
    action->setObjectName(bar->objectName() + u'_' + row.key);
    action->setToolTip(row.tip);
    action->setCheckable(row.checkable);
    m_buttons.insert(row.command, action);
    // Without an icon theme the text shows.
    auto* button = static_cast<QToolButton*>(bar->widgetForAction(action));
    button->setObjectName(action->objectName());
    button->setAccessibleName(row.tip);
    button->setToolButtonStyle(action->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
  }
}

// A key works also while the bar of its button is hidden.
void Commands::AddKeys(QWidget* window) {
  for (const Row& row : Table()) {
    if (row.shortcut.isEmpty()) {
      continue;
    }
    QAction* action = m_items.contains(row.command) ? m_items[row.command] : m_buttons.value(row.command);
    if (action == nullptr) {
      action = Connected(new QAction(this), row.command);
    }
    action->setShortcut(row.shortcut);
    window->addAction(action);
  }
}

}  // namespace letters
