#pragma once

#include <QDialog>

class QAction;
class QLabel;
class QToolBar;

namespace paper {

class Pages;
class PageView;

/// The window of pages before they are printed: leafed through, zoomed, and from here printed or kept as a file, which
/// whoever shows it does.
class PreviewDialog : public QDialog {
  Q_OBJECT

 public:
  /// The pages outlive the dialog.
  PreviewDialog(const Pages& pages, const QString& title, QWidget* parent);

 Q_SIGNALS:
  void PrintWanted();
  void PdfWanted();

 private:
  template <typename Work>
  QAction* Add(const char* name, const QString& text, const QString& icon, const QString& brief, Work work);
  void AddCommands();
  void ShowState();

  QToolBar* m_bar;
  PageView* m_view;
  QLabel* m_state;
  QAction* m_first = nullptr;
  QAction* m_previous = nullptr;
  QAction* m_next = nullptr;
  QAction* m_last = nullptr;
};

}  // namespace paper
