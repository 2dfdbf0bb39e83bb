#include "entry/WindowCopy.h"

#include "entry/LayoutCopy.h"

#include <QAbstractTableModel>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QMetaProperty>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>

#include <algorithm>
#include <array>
#include <set>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

struct Kind {
  const QMetaObject* type;
  QWidget* (*make)(QWidget* parent);
  bool holdsControls = false;
};

template <typename Widget>
Kind KindOf(bool holdsControls = false) {
  return {&Widget::staticMetaObject, [](QWidget* parent) -> QWidget* { return new Widget(parent); }, holdsControls};
}

// The plain class that a control is, or is made from.
const Kind& KindOf(const QWidget& control) {
  static const std::array kinds{
      KindOf<QLabel>(),        KindOf<QLineEdit>(),  KindOf<QComboBox>(),    KindOf<QPushButton>(),
      KindOf<QToolButton>(),   KindOf<QCheckBox>(),  KindOf<QRadioButton>(), KindOf<QTableView>(),
      KindOf<QTextEdit>(),     KindOf<QScrollBar>(), KindOf<QToolBar>(),     KindOf<QMenuBar>(),
      KindOf<QGroupBox>(true), KindOf<QFrame>(true), KindOf<QDialog>(true),  KindOf<QWidget>(true)};
  for (const QMetaObject* type = control.metaObject(); type != nullptr; type = type->superClass()) {
    const auto* found = std::ranges::find(kinds, type, &Kind::type);
    if (found != kinds.end()) {
      return *found;
    }
  }
  qFatal("no widget");
}

using Properties = std::vector<std::pair<QMetaProperty, QVariant>>;

// What differs from a fresh object of that type. Contents of lists and texts, and what a window system decides, are no
// part of it; a label's picture, which none has, would take its text away.
Properties DifferentProperties(const QObject& original, const QObject& fresh, const QMetaObject& type) {
  static const std::set<QByteArrayView> others{
      "visible",     "font",     "palette",    "cursor",    "locale",        "layoutDirection", "geometry",
      "pos",         "size",     "modal",      "html",      "documentTitle", "document",        "currentIndex",
      "currentText", "baseSize", "styleSheet", "plainText", "markdown",      "windowModality",  "inputMethodHints",
      "pixmap"};
  Properties properties;
  for (int i = 0; i < type.propertyCount(); ++i) {
    const QMetaProperty property = type.property(i);
    if (!property.isWritable() || !property.isStored() || others.contains(property.name())) {
      continue;
    }
    const QVariant value = property.read(&original);
    const bool same =
        value.typeId() == QMetaType::QIcon ? value.value<QIcon>().isNull() : value == property.read(&fresh);
    if (!same) {
      properties.emplace_back(property, value);
    }
  }
  return properties;
}

void Set(QObject& object, const Properties& properties) {
  for (const auto& [property, value] : properties) {
    property.write(&object, value);
  }
}

struct ActionCopy {
  explicit ActionCopy(const QAction& original)
      : properties(DifferentProperties(original, QAction(), QAction::staticMetaObject)),
        separator(original.isSeparator()),
        opensMenu(original.menu() != nullptr) {
    if (opensMenu) {
      for (const QAction* item : original.menu()->actions()) {
        items.emplace_back(*item);
      }
    }
  }

  template <typename MenuOrBar>
  void AddTo(MenuOrBar& bar) const {
    if constexpr (!std::is_same_v<MenuOrBar, QToolBar>) {
      if (opensMenu) {
        QMenu* menu = bar.addMenu(QString());
        Set(*menu->menuAction(), properties);
        for (const ActionCopy& item : items) {
          item.AddTo(*menu);
        }
        return;
      }
    }
    QAction* action = bar.addAction(QString());
    action->setSeparator(separator);
    Set(*action, properties);
  }

  Properties properties;
  bool separator;
  bool opensMenu;
  std::vector<ActionCopy> items;
};

class Rows : public QAbstractTableModel {
 public:
  Rows(const QAbstractItemModel& original, QObject* parent) : QAbstractTableModel(parent) {
    for (int column = 0; column < original.columnCount(); ++column) {
      m_header.append(original.headerData(column, Qt::Horizontal).toString());
    }
    for (int row = 0; row < original.rowCount(); ++row) {
      QStringList texts;
      for (int column = 0; column < original.columnCount(); ++column) {
        texts.append(original.index(row, column).data().toString());
      }
      m_rows.push_back(texts);
    }
  }
  Rows(const Rows& other, QObject* parent) : QAbstractTableModel(parent), m_header(other.m_header) {
    // A program has read them just now.
    for (const QStringList& row : other.m_rows) {
      QStringList texts = row;
      texts.detach();
      m_rows.push_back(texts);
    }
  }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(m_header.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::DisplayRole ? m_rows[static_cast<std::size_t>(index.row())][index.column()] : QVariant();
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? m_header[section] : QVariant();
  }

 private:
  QStringList m_header;
  std::vector<QStringList> m_rows;
};

}  // namespace

struct WindowCopy::Control {
  explicit Control(const QWidget& original);

  QWidget* Make(QWidget* parent) const;

 private:
  void ReadChildren(const QWidget& original);
  void ReadGrid(const QTableView& original);
  void MakeChildren(QWidget& control) const;
  void MakeBar(QToolBar& bar) const;
  void MakeList(QComboBox& list) const;
  void MakeGrid(QTableView& grid) const;

  const Kind& m_kind;
  Properties m_properties;
  std::optional<QFont> m_font;
  std::optional<QPalette> m_palette;
  QRect m_geometry;
  bool m_hidden;
  bool m_placed = false;
  std::vector<std::unique_ptr<Control>> m_children;
  std::optional<LayoutCopy> m_layout;
  // Labels and the controls that their mnemonics go to, by places among the children.
  std::vector<std::pair<int, int>> m_buddies;
  std::vector<ActionCopy> m_actions;
  std::unique_ptr<Control> m_menuBar;
  QList<std::pair<QString, QVariant>> m_items;
  int m_current = -1;
  QString m_text;
  std::unique_ptr<Rows> m_rows;
  Properties m_horizontalHeader;
  Properties m_verticalHeader;
  QList<int> m_widths;
};

WindowCopy::Control::Control(const QWidget& original)
    : m_kind(KindOf(original)), m_geometry(original.geometry()), m_hidden(original.isHidden()) {
  const std::unique_ptr<QWidget> fresh(m_kind.make(nullptr));
  m_properties = DifferentProperties(original, *fresh, *m_kind.type);
  if (original.testAttribute(Qt::WA_SetFont)) {
    m_font = original.font();
  }
  if (original.testAttribute(Qt::WA_SetPalette)) {
    m_palette = original.palette();
  }
  if (const auto* list = qobject_cast<const QComboBox*>(&original)) {
    for (int i = 0; i < list->count(); ++i) {
      m_items.emplaceBack(list->itemText(i), list->itemData(i));
    }
    m_current = list->currentIndex();
  } else if (const auto* grid = qobject_cast<const QTableView*>(&original)) {
    ReadGrid(*grid);
  } else if (const auto* text = qobject_cast<const QTextEdit*>(&original)) {
    m_text = text->toPlainText();
  } else if (const auto* bar = qobject_cast<const QToolBar*>(&original)) {
    for (QAction* action : bar->actions()) {
      m_actions.emplace_back(*action);
      auto* held = qobject_cast<QWidgetAction*>(action);
      m_children.push_back(held != nullptr ? std::make_unique<Control>(*held->defaultWidget()) : nullptr);
    }
  } else if (const auto* menus = qobject_cast<const QMenuBar*>(&original)) {
    for (const QAction* action : menus->actions()) {
      m_actions.emplace_back(*action);
    }
  } else if (m_kind.holdsControls) {
    ReadChildren(original);
  }
}

void WindowCopy::Control::ReadChildren(const QWidget& original) {
  QList<QWidget*> children = original.findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  erase_if(children, [](const QWidget* child) {
    return child->isWindow() || child->objectName().startsWith("qt_"_L1) ||
           qobject_cast<const QMenuBar*>(child) != nullptr;
  });
  for (const QWidget* child : std::as_const(children)) {
    m_children.push_back(std::make_unique<Control>(*child));
    m_children.back()->m_placed = original.layout() == nullptr;
    const auto* label = qobject_cast<const QLabel*>(child);
    const auto buddy = label != nullptr && label->buddy() != nullptr ? children.indexOf(label->buddy()) : -1;
    if (buddy >= 0) {
      m_buddies.emplace_back(children.indexOf(child), buddy);
    }
  }
  if (original.layout() != nullptr) {
    m_layout.emplace(*original.layout(), children);
    if (original.layout()->menuBar() != nullptr) {
      m_menuBar = std::make_unique<Control>(*original.layout()->menuBar());
    }
  }
}

void WindowCopy::Control::ReadGrid(const QTableView& original) {
  m_rows = std::make_unique<Rows>(*original.model(), nullptr);
  const QTableView fresh;
  const QMetaObject& type = QHeaderView::staticMetaObject;
  m_horizontalHeader = DifferentProperties(*original.horizontalHeader(), *fresh.horizontalHeader(), type);
  m_verticalHeader = DifferentProperties(*original.verticalHeader(), *fresh.verticalHeader(), type);
  for (int column = 0; column < m_rows->columnCount(); ++column) {
    m_widths.append(original.columnWidth(column));
  }
}

QWidget* WindowCopy::Control::Make(QWidget* parent) const {
  QWidget* control = m_kind.make(parent);
  Set(*control, m_properties);
  if (m_font) {
    control->setFont(*m_font);
  }
  if (m_palette) {
    control->setPalette(*m_palette);
  }
  if (auto* list = qobject_cast<QComboBox*>(control)) {
    MakeList(*list);
  } else if (auto* grid = qobject_cast<QTableView*>(control)) {
    MakeGrid(*grid);
  } else if (auto* text = qobject_cast<QTextEdit*>(control)) {
    text->setPlainText(m_text);
  } else if (auto* bar = qobject_cast<QToolBar*>(control)) {
    MakeBar(*bar);
  } else if (auto* menus = qobject_cast<QMenuBar*>(control)) {
    for (const ActionCopy& action : m_actions) {
      action.AddTo(*menus);
    }
  } else {
    MakeChildren(*control);
  }
  if (m_placed) {
    control->setGeometry(m_geometry);
  }
  if (m_hidden) {
    control->hide();
  }
  return control;
}

void WindowCopy::Control::MakeChildren(QWidget& control) const {
  QList<QWidget*> made;
  for (const auto& child : m_children) {
    made.append(child->Make(&control));
  }
  for (const auto& [label, buddy] : m_buddies) {
    static_cast<QLabel*>(made[label])->setBuddy(made[buddy]);
  }
  if (m_layout) {
    QLayout* layout = m_layout->Make(&control, made);
    if (m_menuBar) {
      layout->setMenuBar(m_menuBar->Make(&control));
    }
  }
}

void WindowCopy::Control::MakeBar(QToolBar& bar) const {
  for (std::size_t i = 0; i < m_actions.size(); ++i) {
    if (m_children[i]) {
      bar.addWidget(m_children[i]->Make(&bar));
    } else {
      m_actions[i].AddTo(bar);
    }
  }
}

void WindowCopy::Control::MakeList(QComboBox& list) const {
  QList<QStandardItem*> rows;
  for (const auto& [text, data] : m_items) {
    rows.append(new QStandardItem(text));
    rows.last()->setData(data, Qt::UserRole);
  }
  static_cast<QStandardItemModel*>(list.model())->invisibleRootItem()->appendRows(rows);
  list.setCurrentIndex(m_current);
}

void WindowCopy::Control::MakeGrid(QTableView& grid) const {
  grid.setModel(new Rows(*m_rows, &grid));
  Set(*grid.horizontalHeader(), m_horizontalHeader);
  Set(*grid.verticalHeader(), m_verticalHeader);
  for (int column = 0; column < m_widths.size(); ++column) {
    grid.setColumnWidth(column, m_widths[column]);
  }
  grid.verticalHeader()->hide();
}

WindowCopy::WindowCopy(const QDialog& original)
    : m_window(std::make_unique<Control>(original)), m_size(original.size()), m_state(original.windowState()) {}

WindowCopy::~WindowCopy() = default;

std::unique_ptr<QDialog> WindowCopy::Make() const {
  std::unique_ptr<QDialog> window(static_cast<QDialog*>(m_window->Make(nullptr)));
  // Every window asks its layout for its size.
  window->resize(m_state == Qt::WindowNoState ? window->sizeHint().expandedTo(m_size) : m_size);
  window->setWindowState(m_state);
  return window;
}

}  // namespace bench
