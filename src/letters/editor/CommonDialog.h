#pragma once

#include "letters/editor/Formatting.h"

#include <QObject>

#include <functional>
#include <optional>

class QColor;
class QFont;
class QPrinter;
class QWidget;

namespace paper {
class Pages;
}

namespace letters {

class LetterEdit;

/// The dialogs beside its own window that the editor shows: `dlgCarta`. Each window has that name, too.
class CommonDialog : public QObject {
 public:
  explicit CommonDialog(QWidget* owner);

  /// Asks for the printer and what to print, all or, where there is one, the selection; no page numbers. False when it
  /// was cancelled.
  bool ShowPrinter(QPrinter& printer, bool hasSelection) const;
  /// Nothing when it was cancelled, as the next one.
  std::optional<QFont> ShowFont(const QFont& initial) const;
  std::optional<QColor> ShowColor(const QColor& initial) const;
  std::optional<Spacing> ShowSpacing(const Spacing& initial) const;
  /// The picture to insert, and the file that a PDF becomes, with the suffix; empty when it was cancelled.
  QString ShowOpenPicture() const;
  QString ShowSavePdf(const QString& initialName) const;
  /// Shows pages until the window is closed; does what is asked for from there.
  void ShowPreview(const paper::Pages& pages, const QString& title, const std::function<void()>& print,
                   const std::function<void()>& savePdf) const;
  /// Replaces texts of the letter until the window is closed. Returns what was looked for last.
  QString ShowReplace(LetterEdit& letter, const QString& text) const;

 private:
  QWidget* m_owner;
};

}  // namespace letters
