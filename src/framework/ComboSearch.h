#pragma once

#include <QDeadlineTimer>
#include <QObject>

class QComboBox;

namespace framework {

/// Finds the items of a list by typing: what is typed in one go is the beginning of any word of the item, several words
/// each the beginning of one, without regard to case and accents ("mad" finds "Comunidad de Madrid"). Typing on narrows
/// the search from the item found; one letter again and again goes through its items; backspace takes a letter back.
/// What is selected changes as by the arrow keys, in the closed list and in the open one, so that the list always shows
/// what is selected. Lists that take typed text are left alone. Belongs to its list.
class ComboSearch : public QObject {
  Q_OBJECT

 public:
  explicit ComboSearch(QComboBox* combo);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool OnKey(const QString& typed);
  bool TakeBack();
  // Searches from the item at `from` on, round to the one before it; -1 for none.
  int Find(const QString& text, int from) const;
  int Highlighted() const;
  void Select(int index);
  void ShowTyped() const;

  QComboBox* m_combo;
  QString m_typed;
  QDeadlineTimer m_inOneGo;
};

}  // namespace framework
