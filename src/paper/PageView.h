#pragma once

#include <QAbstractScrollArea>

namespace paper {

class Pages;

/// One page as it will be printed, on white paper in any theme; it paints no other than the one in sight.
class PageView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit PageView(QWidget* parent);

  /// Shows the first of these pages, which outlive the view.
  void SetPages(const Pages& pages);
  /// From 0; cut to the pages that there are.
  void SetPage(int page);
  int Page() const { return m_page; }
  int PageCount() const;

  /// 1.0 is the size of the print.
  double Zoom() const;
  void SetZoom(double zoom);
  /// Keeps the whole page in sight, also when the window changes. That is how it begins.
  void FitPage();
  void FitWidth();

 Q_SIGNALS:
  void PageChanged();
  void ZoomChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  enum class Fit { Nothing, Page, Width };

  QSizeF SheetSize() const;
  void Arrange();
  void SetFit(Fit fit);
  void Leaf(int pages);

  const Pages* m_pages = nullptr;
  int m_page = 0;
  double m_zoom = 1.0;
  Fit m_fit = Fit::Page;
  int m_wheel = 0;
};

}  // namespace paper
