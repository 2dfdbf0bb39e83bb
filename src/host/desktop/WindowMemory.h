#pragma once

#include "host/records/NodeCatalog.h"

#include <QList>
#include <QString>
#include <Qt>

class QAction;
class QMainWindow;
class QSplitter;

/// What the window remembers between two starts, in the user's settings of the application. Values there that make no
/// sense are passed over.
namespace host {

/// How the list of a node looks. Columns are given by their places in the node, and kept by their names: a later
/// version may have others.
struct ListLayout {
  QList<int> shown;  ///< The columns in sight, in their order; empty for all as they come.
  QList<int>
      widths;  ///< One for each column of the node, in pixels, 0 for one that is fitted; empty for none remembered.
  int sortColumn = 0;
  Qt::SortOrder order = Qt::AscendingOrder;
};

/// As the node has it until the user has changed it. `scope` is whose lists these are: a user of a database.
ListLayout LoadListLayout(const QString& scope, const Node& node);
void SaveListLayout(const QString& scope, const Node& node, const ListLayout& layout);

/// Size, place, toolbars and the splitter; a first start takes a share of the screen, most of a small one.
void LoadWindow(QMainWindow& window, QSplitter& splitter);
void SaveWindow(const QMainWindow& window, const QSplitter& splitter);

/// Whether the pane below the list is wanted, as the action says, and how the two share their place. It is, until the
/// user takes it away.
void LoadDetail(QSplitter& splitter, QAction& wanted);
void SaveDetail(const QSplitter& splitter, const QAction& wanted);

/// Whether the first steps are to be shown: until the user forgoes them.
bool WantsFirstSteps();
void ForgoFirstSteps();

/// The node that was shown last; `otherwise` when none was.
int LoadLastNode(int otherwise);
void SaveLastNode(int nodeId);

}  // namespace host
