#pragma once

#include "host/help/Pages.h"

#include <QMainWindow>

class QLabel;
class QLineEdit;
class QListWidget;
class QSplitter;
class QStackedWidget;
class QTreeWidget;

namespace host {

class HelpBrowser;

/// The manual: its contents or what a search found on the left, a page on the right. Place and size of the texts are
/// remembered.
class HelpWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// The pages must outlive it.
  explicit HelpWindow(Pages& pages);
  HelpWindow(const HelpWindow&) = delete;
  HelpWindow& operator=(const HelpWindow&) = delete;
  ~HelpWindow() override;

  HelpBrowser& Browser() { return *m_browser; }
  /// A page instead of what was searched.
  void ShowTopic(const QString& page, const QString& anchor);
  /// Comes to the front. It can be used beside `dialog`, a modal window, until that one ends; null for none. When it
  /// ends while another dialog is open, the window can be used beside that one.
  void ShowBeside(QWidget* dialog);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void SetUpBar();
  void SetUpLeftSide();
  void FillContents();
  void ShowContentsEntry();
  void ShowPlaceInContents(const QUrl& shown);
  void Search(const QString& words);
  void ShowHit();
  void Enlarge(int steps);
  void TellOfOutside(const QUrl& url);
  void LeaveFree(const QRect& dialog);
  /// The dialog beside which the window was usable has gone.
  void FindOtherDialog();
  void Remember() const;

  Pages& m_pages;
  HelpBrowser* m_browser;
  QSplitter* m_splitter;
  QLineEdit* m_words;
  QStackedWidget* m_left;
  QTreeWidget* m_contents;
  QListWidget* m_hits;
  QLabel* m_none;
  int m_steps = 0;  ///< How much larger the texts are than elsewhere, in steps of QTextEdit::zoomIn.
};

}  // namespace host
