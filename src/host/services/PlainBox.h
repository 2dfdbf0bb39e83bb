#pragma once

#include <QMessageBox>

namespace host {

/// A message box that shows all its texts as they stand: what a database or a user wrote is never taken as markup,
/// which could open files and show links.
class PlainBox : public QMessageBox {
 public:
  PlainBox(Icon icon, const QString& title, const QString& text, StandardButtons buttons, QWidget* parent);

  /// The smaller text under the first.
  void SetFurtherText(const QString& text);
};

}  // namespace host
