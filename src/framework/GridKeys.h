#pragma once

#include <QObject>

class QAbstractItemView;

namespace framework {

/// The keys of a grid beside its add, modify and delete buttons: Ins, Enter or F2 (and a double click),
/// Del.
class GridKeys : public QObject {
  Q_OBJECT

 public:
  /// Belongs to the grid.
  explicit GridKeys(QAbstractItemView* grid);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Add();
  void Modify();
  void Delete();
};

}  // namespace framework
