#pragma once

#include "host/help/Pages.h"

#include <QObject>

#include <memory>

namespace host {

class HelpWindow;

/// The program's help, while the object lives: whoever opens the manual's first page by the desktop's services (the
/// component at F1, the window's menu) sees the page about what is in front, from the control with the focus on.
/// Windows that do nothing at F1 by themselves get the same, boxes excepted. Other files go on to the desktop.
///
/// A page about a window has the window's name, and anchors with names of controls. A widget of another name, or one
/// that shows now this and now that, has the page, or "page#anchor", in the property `topicProperty`.
class HelpDesk : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* topicProperty = "helpTopic";

  /// `file` is the manual's first page; empty, or not there, where the manual is missing.
  explicit HelpDesk(const QString& file);
  HelpDesk(const HelpDesk&) = delete;
  HelpDesk& operator=(const HelpDesk&) = delete;
  ~HelpDesk() override;

  /// Null until help was asked for.
  HelpWindow* Window() { return m_window.get(); }
  /// Shows a page that the program made.
  void ShowMade(const QString& html);

  bool eventFilter(QObject* watched, QEvent* event) override;

 public Q_SLOTS:
  /// For QDesktopServices.
  void Open(const QUrl& url);

 private:
  struct Topic {
    QString page;
    QString anchor;
  };

  Topic TopicOf(const QWidget* widget);
  void ShowWhatIsInFront();
  HelpWindow& Shown();

  Pages m_pages;
  std::unique_ptr<HelpWindow> m_window;
};

}  // namespace host
