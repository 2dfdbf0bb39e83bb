#pragma once

#include <QHash>
#include <QObject>

class QAction;
class QMenuBar;
class QToolBar;

namespace letters {

/// What the editor does, wherever it is asked for.
enum class Command {
  Save,
  SaveAs,
  Print,
  Preview,
  SavePdf,
  Exit,
  Undo,
  Redo,
  Cut,
  Copy,
  Paste,
  SelectAll,
  ShowStandardBar,
  ShowFormatBar,
  Font,
  Colour,
  Help,
  Find,
  FindAgain,
  Replace,
  Bold,
  Italic,
  Underline,
  StrikeOut,
  Raised,
  Lowered,
  Highlight,
  Left,
  Centre,
  Right,
  Justify,
  Bullets,
  Numbers,
  IndentLess,
  IndentMore,
  Paragraph,
  CheckMarkers,
  Field,
  Picture,
  PageNumber,
  Today,
};

/// The commands as menu items, tool buttons and keys, all from one table. Menu captions are string numbers until they
/// are replaced.
class Commands : public QObject {
  Q_OBJECT

 public:
  /// Fills the bars; keys work in the whole window.
  Commands(QWidget* window, QMenuBar* menus, QToolBar* standard, QToolBar* format);

  /// The menu item, null for a command without one.
  QAction* Item(Command command) const { return m_items.value(command); }
  /// The tool button's action, null for a command without a button.
  QAction* Button(Command command) const { return m_buttons.value(command); }

  /// Shows whether something that can be on or off is on.
  void Check(Command command, bool isOn);

 Q_SIGNALS:
  void Triggered(letters::Command command);

 private:
  struct Row;

  void FillMenus(QMenuBar* menus);
  void FillBar(QToolBar* bar);
  void AddKeys(QWidget* window);
  QAction* Connected(QAction* action, Command command);
  static QList<Row> FirstRows();
  static QList<Row> LaterRows();
  static const QList<Row>& Table();

  QHash<Command, QAction*> m_items;
  QHash<Command, QAction*> m_buttons;
};

}  // namespace letters
