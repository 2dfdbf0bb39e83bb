#include "host/desktop/WindowMemory.h"

#include <QAction>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>
#include <QSplitter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int narrowestColumn = 8;
constexpr int widestColumn = 8000;
// In pixels, of the first start where the screen has room for it.
constexpr QSize usualSize(1100, 720);

QString ListKey(const QString& scope, const Node& node, const char* name) {
  return u"Listas/%1/%2/%3"_s.arg(scope, QString::number(node.id), QLatin1StringView(name));
}

int ColumnOf(const Node& node, const QString& title) {
  const auto found = std::ranges::find(node.columns, title, &ListColumn::title);
  return found == node.columns.end() ? -1 : static_cast<int>(found - node.columns.begin());
}

// A column that is not there any more is passed over.
QList<int> Columns(const Node& node, const QStringList& titles) {
  QList<int> columns;
  for (const QString& title : titles) {
    const int column = ColumnOf(node, title);
    if (column >= 0 && !columns.contains(column)) {
      columns.append(column);
    }
  }
  return columns;
}

QStringList Titles(const Node& node, const QList<int>& columns) {
  QStringList titles;
  for (const int column : columns) {
    titles.append(node.columns[column].title);
  }
  return titles;
}

// Kept as "title=width".
QList<int> Widths(const Node& node, const QStringList& stored) {
  QList<int> widths;
  for (const QString& each : stored) {
    const int column = ColumnOf(node, each.section(u'=', 0, -2));
    const int width = each.section(u'=', -1).toInt();
    if (column >= 0 && width >= narrowestColumn && width <= widestColumn) {
      widths.resize(node.columns.size());
      widths[column] = width;
    }
  }
  return widths;
}

QStringList WidthTexts(const Node& node, const QList<int>& widths) {
  QStringList texts;
  for (int column = 0; column < widths.size(); ++column) {
    if (widths[column] > 0) {
      texts.append(u"%1=%2"_s.arg(node.columns[column].title, QString::number(widths[column])));
    }
  }
  return texts;
}

}  // namespace

ListLayout LoadListLayout(const QString& scope, const Node& node) {
  const QSettings settings;
  ListLayout layout;
  layout.shown = Columns(node, settings.value(ListKey(scope, node, "Columnas")).toStringList());
  layout.widths = Widths(node, settings.value(ListKey(scope, node, "Anchos")).toStringList());
  const int column = ColumnOf(node, settings.value(ListKey(scope, node, "Orden")).toString());
  layout.sortColumn = column >= 0 ? column : node.sortColumn;
  const bool descending =
      settings.value(ListKey(scope, node, "Descendente"), node.sortOrder == Qt::DescendingOrder).toBool();
  layout.order = descending ? Qt::DescendingOrder : Qt::AscendingOrder;
  return layout;
}

void SaveListLayout(const QString& scope, const Node& node, const ListLayout& layout) {
  QSettings settings;
  settings.setValue(ListKey(scope, node, "Columnas"), Titles(node, layout.shown));
  settings.setValue(ListKey(scope, node, "Anchos"), WidthTexts(node, layout.widths));
  settings.setValue(ListKey(scope, node, "Orden"), node.columns.value(layout.sortColumn).title);
  settings.setValue(ListKey(scope, node, "Descendente"), layout.order == Qt::DescendingOrder);
}

void LoadWindow(QMainWindow& window, QSplitter& splitter) {
  const QSettings settings;
  if (!window.restoreGeometry(settings.value(u"Ventana/Geometria"_s).toByteArray())) {
    const QSize screen = window.screen()->availableSize();
    window.resize((screen * 2 / 3).expandedTo(usualSize).boundedTo(screen * 9 / 10));
  }
  window.restoreState(settings.value(u"Ventana/Estado"_s).toByteArray());
  if (!splitter.restoreState(settings.value(u"Ventana/Division"_s).toByteArray())) {
    const int tree = splitter.widget(0)->sizeHint().width();
    splitter.setSizes({tree, window.width() - tree});
  }
}

void SaveWindow(const QMainWindow& window, const QSplitter& splitter) {
  QSettings settings;
  settings.setValue(u"Ventana/Geometria"_s, window.saveGeometry());
  settings.setValue(u"Ventana/Estado"_s, window.saveState());
  settings.setValue(u"Ventana/Division"_s, splitter.saveState());
}

void LoadDetail(QSplitter& splitter, QAction& wanted) {
  const QSettings settings;
  if (!splitter.restoreState(settings.value(u"Ventana/DivisionDetalle"_s).toByteArray())) {
    splitter.setSizes({3000, 2000});
  }
  splitter.setOrientation(Qt::Vertical);
  wanted.setChecked(settings.value(u"Ventana/Detalle"_s, true).toBool());
}

void SaveDetail(const QSplitter& splitter, const QAction& wanted) {
  QSettings settings;
  settings.setValue(u"Ventana/DivisionDetalle"_s, splitter.saveState());
  settings.setValue(u"Ventana/Detalle"_s, wanted.isChecked());
}

bool WantsFirstSteps() {
  return QSettings().value(u"Inicio/PrimerosPasos"_s, true).toBool();
}

void ForgoFirstSteps() {
  QSettings().setValue(u"Inicio/PrimerosPasos"_s, false);
}

int LoadLastNode(int otherwise) {
  return QSettings().value(u"Ventana/Nodo"_s, otherwise).toInt();
}

void SaveLastNode(int nodeId) {
  QSettings().setValue(u"Ventana/Nodo"_s, nodeId);
}

}  // namespace host
