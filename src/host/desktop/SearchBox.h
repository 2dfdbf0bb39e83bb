#pragma once

#include <QLineEdit>

namespace host {

/// The search box: Esc empties it; Enter and the arrow keys leave for the list.
class SearchBox : public QLineEdit {
  Q_OBJECT

 public:
  using QLineEdit::QLineEdit;

 Q_SIGNALS:
  void ListWanted();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace host
