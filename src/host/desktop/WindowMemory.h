#pragma once

#include <QList>
#include <Qt>

class QAction;
class QMainWindow;
class QSplitter;

/// What the window remembers between two starts, in the user's settings of the application. Values there that make no
/// sense are passed over.
namespace host {

/// How the list of a node looks.
struct ListLayout {
  QList<int> widths;  ///< One for each column, in pixels; empty for none remembered.
  int sortColumn = 0;
  Qt::SortOrder order = Qt::AscendingOrder;
};

/// Sorted as given until the user has sorted the list otherwise.
ListLayout LoadListLayout(int nodeId, int columns, int sortColumn, Qt::SortOrder order);
void SaveListLayout(int nodeId, const ListLayout& layout);

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
