#pragma once

#include <QObject>

#include <optional>

class QColor;
class QFont;
class QPrinter;
class QWidget;

namespace letters {

/// The dialogs of the desktop that the editor shows: `dlgCarta`. Each window has that name, too.
class CommonDialog : public QObject {
 public:
  explicit CommonDialog(QWidget* owner);

  /// Asks for the printer and what to print, all or, where there is one, the selection; no page numbers. False when it
  /// was cancelled.
  bool ShowPrinter(QPrinter& printer, bool hasSelection) const;
  /// Nothing when it was cancelled, as the next one.
  std::optional<QFont> ShowFont(const QFont& initial) const;
  std::optional<QColor> ShowColor(const QColor& initial) const;

 private:
  QWidget* m_owner;
};

}  // namespace letters
