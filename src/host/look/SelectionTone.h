#pragma once

#include <QObject>

class QAbstractItemView;

namespace host {

/// Pales a view's selection while the focus is elsewhere in the window, so that one sees where the keys go.
class SelectionTone : public QObject {
 public:
  /// Belongs to the view.
  explicit SelectionTone(QAbstractItemView* view);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Apply(bool focused);

  QAbstractItemView* m_view;
};

}  // namespace host
