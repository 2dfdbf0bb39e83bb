#pragma once

#include <QToolBar>

#include <functional>

class QLabel;

namespace paper {

class PageView;

/// The bar over pages: leafs through them, zooms, says which one is in sight.
class PageBar : public QToolBar {
  Q_OBJECT

 public:
  explicit PageBar(QWidget* parent);

  /// A further command; `text` is its name, `brief` what shows without icons.
  QAction* Add(const char* name, const QString& text, const QString& icon, const QString& brief,
               const std::function<void()>& work);
  /// Adds the commands for the view, which lives as long as the bar. `nothing` is said where there is no page.
  void AddLeafing(PageView& view, const QString& nothing);

 private:
  void ShowState(const PageView& view, const QString& nothing);

  QLabel* m_state;
  QAction* m_first = nullptr;
  QAction* m_previous = nullptr;
  QAction* m_next = nullptr;
  QAction* m_last = nullptr;
};

}  // namespace paper
