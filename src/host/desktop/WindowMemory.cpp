#include "host/desktop/WindowMemory.h"

#include <QAction>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>
#include <QSplitter>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int narrowestColumn = 8;
constexpr int widestColumn = 8000;
// In pixels, of the first start where the screen has room for it.
constexpr QSize usualSize(1100, 720);

QString ListKey(int nodeId, const char* name) {
  return u"Listas/%1/%2"_s.arg(nodeId).arg(QLatin1StringView(name));
}

QList<int> SensibleWidths(const QVariantList& stored, int columns) {
  QList<int> widths;
  for (const QVariant& value : stored) {
    const int width = value.toInt();
    if (width < narrowestColumn || width > widestColumn) {
      return {};
    }
    widths.append(width);
  }
  return widths.size() == columns ? widths : QList<int>();
}

}  // namespace

ListLayout LoadListLayout(int nodeId, int columns, int sortColumn, Qt::SortOrder order) {
  const QSettings settings;
  ListLayout layout;
  layout.widths = SensibleWidths(settings.value(ListKey(nodeId, "Anchos")).toList(), columns);
  const int column = settings.value(ListKey(nodeId, "Orden"), sortColumn).toInt();
  layout.sortColumn = column >= 0 && column < columns ? column : 0;
  const bool descending = settings.value(ListKey(nodeId, "Descendente"), order == Qt::DescendingOrder).toBool();
  layout.order = descending ? Qt::DescendingOrder : Qt::AscendingOrder;
  return layout;
}

void SaveListLayout(int nodeId, const ListLayout& layout) {
  QSettings settings;
  QVariantList widths;
  for (const int width : layout.widths) {
    widths.append(width);
  }
  settings.setValue(ListKey(nodeId, "Anchos"), widths);
  settings.setValue(ListKey(nodeId, "Orden"), layout.sortColumn);
  settings.setValue(ListKey(nodeId, "Descendente"), layout.order == Qt::DescendingOrder);
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
