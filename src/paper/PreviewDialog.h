#pragma once

#include <QDialog>

namespace paper {

class Pages;

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
};

}  // namespace paper
