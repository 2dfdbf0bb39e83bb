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
  QString caption;      ///< A text, or the number of one.
  QString parent = {};  ///< Empty for one of the bar.
};

const QList<MenuRow>& Menus() {
  static const QList<MenuRow> menus{
      {u"mnuArchivo"_s, u"3003"_s},       {u"mnuEdición"_s, u"3008"_s},
      {u"mnuVer"_s, u"3014"_s},           {u"mnuVerBarraDeHerramientas"_s, u"3015"_s, u"mnuVer"_s},
      {u"mnuFormato"_s, u"3017"_s},       {u"mnuAyuda"_s, u"3020"_s},
      {u"mnuInsertar"_s, u"&Insertar"_s},
  };
  return menus;
}

}  // namespace

/// A command with its menu item, its tool button, its key; each may be missing. Rows stand in the order of both bars.
struct Commands::Row {
  Command command;
  QString menu = {};
  QString item = {};
  /// A text, or the number of one.
  QString caption = {};
  QString bar = {};
  QString key = {};
  QString tip = {};
  QString icon = {};
  /// What a button shows without an icon theme.
  QString brief = {};
  /// None for what the text box does by itself when the focus is in it.
  QKeySequence shortcut = {};
  bool checkable = false;

  Row InMenu(const QString& inMenu, const QString& name, const QString& text) const {
    Row row = *this;
    row.menu = inMenu;
    row.item = name;
    row.caption = text;
    return row;
  }
  Row InMenu(const QString& inMenu, const QString& name, int stringId) const {
    return InMenu(inMenu, name, QString::number(stringId));
  }
  Row OnBar(const QString& onBar, const QString& name, const QString& toolTip, const QString& iconName,
            const QString& shortText = {}) const {
    Row row = *this;
    row.bar = onBar;
    row.key = name;
    row.tip = toolTip;
    row.icon = iconName;
    row.brief = shortText.isEmpty() ? toolTip : shortText;
    return row;
  }
  Row Keys(const QString& keys) const {
    Row row = *this;
    row.shortcut = QKeySequence(keys);
    return row;
  }
  Row Checkable() const {
    Row row = *this;
    row.checkable = true;
    return row;
  }
};

QList<Commands::Row> Commands::FirstRows() {
  const auto standard = u"tlbEstandar"_s;
  const auto format = u"tlbFormato"_s;
  const auto file = u"mnuArchivo"_s;
  const auto edit = u"mnuEdición"_s;
  const auto bars = u"mnuVerBarraDeHerramientas"_s;
  const auto looks = u"mnuFormato"_s;
  const auto of = [](Command command) { return Row{.command = command}; };
  using enum Command;
  return {
      of(Save)
          .InMenu(file, u"mnuArchivoGuardar"_s, 3004)
          .OnBar(standard, u"guardar"_s, u"Guardar"_s, u"document-save"_s)
          .Keys(u"Ctrl+S"_s),
      of(SaveAs).InMenu(file, u"mnuArchivoGuardarComo"_s, 3005).Keys(u"Ctrl+Shift+S"_s),
      of(Print)
          .InMenu(file, u"mnuArchivoImprimir"_s, 3006)
          .OnBar(standard, u"imprimir"_s, u"Imprimir"_s, u"document-print"_s)
          .Keys(u"Ctrl+P"_s),
      of(Exit).InMenu(file, u"mnuArchivosalir"_s, 3007),
      of(Undo).InMenu(edit, u"mnuEdicionDeshacer"_s, 3009),
      of(Cut).InMenu(edit, u"mnuEdicionCortar"_s, 3010).OnBar(standard, u"cortar"_s, u"Cortar"_s, u"edit-cut"_s),
      of(Copy).InMenu(edit, u"mnuEdicionCopiar"_s, 3011).OnBar(standard, u"copiar"_s, u"Copiar"_s, u"edit-copy"_s),
      of(Paste).InMenu(edit, u"mnuEdicionPegar"_s, 3012).OnBar(standard, u"pegar"_s, u"Pegar"_s, u"edit-paste"_s),
      of(SelectAll).InMenu(edit, u"mnuedicionseleccionartodo"_s, 3013),
      of(Find).OnBar(standard, u"buscar"_s, u"Buscar"_s, u"edit-find"_s).Keys(u"Ctrl+F"_s),
      of(Undo).OnBar(standard, u"deshacer"_s, u"Deshacer"_s, u"edit-undo"_s),
      of(ShowStandardBar).InMenu(bars, u"mnuVerBarraDeHerramientasEstandar"_s, 3016).Checkable(),
      of(ShowFormatBar).InMenu(bars, u"mnuVerBarraDeHerramientasFormato"_s, 3017).Checkable(),
      of(Font).InMenu(looks, u"mnuFormatoFuente"_s, 3018),
      of(Bold).OnBar(format, u"negrita"_s, u"Negrita"_s, u"format-text-bold"_s, u"N"_s).Keys(u"Ctrl+B"_s).Checkable(),
      of(Italic)
          .OnBar(format, u"cursiva"_s, u"Cursiva"_s, u"format-text-italic"_s, u"K"_s)
          .Keys(u"Ctrl+I"_s)
          .Checkable(),
      of(Underline)
          .OnBar(format, u"subrayado"_s, u"Subrayado"_s, u"format-text-underline"_s, u"S"_s)
          .Keys(u"Ctrl+U"_s)
          .Checkable(),
      of(Left)
          .OnBar(format, u"left"_s, u"Alinear a la izquierda"_s, u"format-justify-left"_s, u"Izq."_s)
          .Keys(u"Ctrl+L"_s)
          .Checkable(),
      of(Centre)
          .OnBar(format, u"center"_s, u"Centrar"_s, u"format-justify-center"_s, u"Centro"_s)
          .Keys(u"Ctrl+E"_s)
          .Checkable(),
      of(Right)
          .OnBar(format, u"right"_s, u"Alinear a la derecha"_s, u"format-justify-right"_s, u"Der."_s)
          .Keys(u"Ctrl+R"_s)
          .Checkable(),
      of(Justify)
          .OnBar(format, u"Justify"_s, u"Justificar"_s, u"format-justify-fill"_s, u"Justif."_s)
          .Keys(u"Ctrl+J"_s)
          .Checkable(),
      of(Bullets).OnBar(format, u"desordenada"_s, u"Viñetas"_s, u"format-list-unordered"_s).Keys(u"Ctrl+Shift+L"_s),
      // Intended: the key "indent" takes an indent away, "outdent" adds one.
      of(IndentLess)
          .OnBar(format, u"indent"_s, u"Disminuir sangría"_s, u"format-indent-less"_s, u"− Sangría"_s)
          .Keys(u"Alt+Shift+Left"_s),
      of(IndentMore)
          .OnBar(format, u"outdent"_s, u"Aumentar sangría"_s, u"format-indent-more"_s, u"+ Sangría"_s)
          .Keys(u"Alt+Shift+Right"_s),
      of(Colour)
          .InMenu(looks, u"mnuformatoColorFuente"_s, 3019)
          .OnBar(format, u"color_letra"_s, u"Color de la fuente"_s, u"format-text-color"_s, u"Color"_s),
      of(Help).InMenu(u"mnuAyuda"_s, u"mnuAyudaContenido"_s, 3021),
  };
}

// Behind everything that has had its place for long: hands know those places. The format bar is full.
QList<Commands::Row> Commands::LaterRows() {
  const auto standard = u"tlbEstandar"_s;
  const auto file = u"mnuArchivo"_s;
  const auto edit = u"mnuEdición"_s;
  const auto looks = u"mnuFormato"_s;
  const auto insert = u"mnuInsertar"_s;
  const auto of = [](Command command) { return Row{.command = command}; };
  using enum Command;
  return {
      of(Redo)
          .InMenu(edit, u"mnuEdicionRehacer"_s, u"&Rehacer"_s)
          .OnBar(standard, u"rehacer"_s, u"Rehacer"_s, u"edit-redo"_s)
          .Keys(u"Ctrl+Y"_s),
      of(Preview)
          .InMenu(file, u"mnuArchivoVistaPrevia"_s, u"&Vista previa"_s)
          .OnBar(standard, u"vista_previa"_s, u"Vista previa"_s, u"document-print-preview"_s),
      of(SavePdf).InMenu(file, u"mnuArchivoPdf"_s, u"Guardar como P&DF..."_s),
      of(FindAgain).InMenu(edit, u"mnuEdicionBuscarSiguiente"_s, u"&Buscar siguiente"_s).Keys(u"F3"_s),
      of(Replace)
          .InMenu(edit, u"mnuEdicionReemplazar"_s, u"R&eemplazar..."_s)
          .OnBar(standard, u"reemplazar"_s, u"Reemplazar"_s, u"edit-find-replace"_s)
          .Keys(u"Ctrl+H"_s),
      of(Field)
          .InMenu(insert, u"mnuInsertarCampo"_s, u"&Campo..."_s)
          .OnBar(standard, u"campos"_s, u"Insertar un campo"_s, {}, u"Campos"_s)
          .Keys(u"Ctrl+M"_s),
      of(Picture)
          .InMenu(insert, u"mnuInsertarImagen"_s, u"&Imagen..."_s)
          .OnBar(standard, u"imagen"_s, u"Insertar una imagen"_s, u"insert-image"_s, u"Imagen"_s),
      of(PageNumber).InMenu(insert, u"mnuInsertarPagina"_s, u"&Número de página"_s),
      of(Today).InMenu(insert, u"mnuInsertarFecha"_s, u"&Fecha de hoy"_s),
      of(Highlight)
          .InMenu(looks, u"mnuFormatoResaltado"_s, u"&Resaltado"_s)
          .OnBar(standard, u"resaltado"_s, u"Resaltado"_s, u"draw-highlight"_s)
          .Checkable(),
      of(Numbers)
          .InMenu(looks, u"mnuFormatoNumeracion"_s, u"&Numeración"_s)
          .OnBar(standard, u"ordenada"_s, u"Numeración"_s, u"format-list-ordered"_s),
      of(Paragraph)
          .InMenu(looks, u"mnuFormatoParrafo"_s, u"&Párrafo..."_s)
          .OnBar(standard, u"parrafo"_s, u"Interlineado y espacio del párrafo"_s, u"format-line-spacing-normal"_s,
                 u"Párrafo"_s),
      of(StrikeOut)
          .InMenu(looks, u"mnuFormatoTachado"_s, u"&Tachado"_s)
          .OnBar(standard, u"tachado"_s, u"Tachado"_s, u"format-text-strikethrough"_s)
          .Checkable(),
      of(Raised)
          .InMenu(looks, u"mnuFormatoSuperindice"_s, u"&Superíndice"_s)
          .OnBar(standard, u"superindice"_s, u"Superíndice"_s, u"format-text-superscript"_s)
          .Checkable(),
      of(Lowered)
          .InMenu(looks, u"mnuFormatoSubindice"_s, u"Su&bíndice"_s)
          .OnBar(standard, u"subindice"_s, u"Subíndice"_s, u"format-text-subscript"_s)
          .Checkable(),
      of(CheckMarkers).Keys(u"F7"_s),
  };
}

const QList<Commands::Row>& Commands::Table() {
  static const QList<Row> table = FirstRows() + LaterRows();
  return table;
}

Commands::Commands(QWidget* window, QMenuBar* menus, QToolBar* standard, QToolBar* format) : QObject(window) {
  FillMenus(menus);
  FillBar(standard);
  FillBar(format);
  AddKeys(window);
}

void Commands::Check(Command command, bool isOn) {
  for (QAction* action : {Item(command), Button(command)}) {
    if (action != nullptr) {
      action->setChecked(isOn);
    }
  }
}

QAction* Commands::Connected(QAction* action, Command command) {
  connect(action, &QAction::triggered, this, [this, command] { Q_EMIT Triggered(command); });
  return action;
}

void Commands::FillMenus(QMenuBar* menus) {
  QHash<QString, QMenu*> byName;
  for (const MenuRow& row : Menus()) {
    QMenu* menu = row.parent.isEmpty() ? menus->addMenu(row.caption) : byName.value(row.parent)->addMenu(row.caption);
    menu->setObjectName(row.name);
    menu->menuAction()->setObjectName(row.name);
    byName.insert(row.name, menu);
  }
  for (const Row& row : Table()) {
    if (!row.item.isEmpty()) {
      QAction* item = Connected(byName.value(row.menu)->addAction(row.caption), row.command);
      item->setObjectName(row.item);
      item->setCheckable(row.checkable);
      item->setChecked(row.checkable && row.bar.isEmpty());
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
    action->setIconText(row.brief);
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
