#pragma once

#include <QFrame>

class QLineEdit;
class QListWidget;

namespace letters {

class FieldMenu;

/// The markers of the menu as one list, found by typing any words of their names, whatever case and accents. Return and
/// a click choose, Escape goes away. It goes by itself when something else is clicked.
class FieldList : public QFrame {
 public:
  explicit FieldList(FieldMenu& menu, QWidget* parent);

  /// Shows what the menu has now, with its upper left corner at a place of the screen.
  void Open(const QPoint& at);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Fill();
  void Filter();
  void Move(int items);
  void Choose();

  FieldMenu& m_menu;
  QLineEdit* m_words;
  QListWidget* m_fields;
};

}  // namespace letters
