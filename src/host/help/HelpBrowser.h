#pragma once

#include "host/help/Pages.h"

#include <QTextBrowser>

namespace host {

/// Shows pages of the manual and nothing else. A link that leads out of it is told to the listener.
class HelpBrowser : public QTextBrowser {
  Q_OBJECT

 public:
  /// The name of the page that ShowMade shows.
  static const QString made;

  /// The pages must outlive it.
  explicit HelpBrowser(Pages& pages, QWidget* parent = nullptr);

  /// Shows a page from the anchor on, which is marked; without one from its beginning.
  void ShowPage(const QString& page, const QString& anchor = {});
  /// Shows a page and marks the line at that place of its document.
  void ShowLine(const QString& page, int position);
  /// Shows a page that the program made; its links are seen from the manual's folder.
  void ShowMade(const QString& html);
  /// The name of the page that is shown.
  QString Page() const;

  QVariant loadResource(int type, const QUrl& name) override;

 Q_SIGNALS:
  /// The link is none of the manual's.
  void LedOutside(const QUrl& url);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Follow(const QUrl& url);
  /// Marks the paragraph or row at the place; nothing for one below 0.
  void Mark(int position);
  int PositionOf(const QString& anchor) const;

  Pages& m_pages;
  QString m_made;
};

}  // namespace host
