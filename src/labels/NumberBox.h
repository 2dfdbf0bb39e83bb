#pragma once

#include <QObject>

#include <optional>

class QLineEdit;

namespace labels {

class UpDown;

/// Holds a box of a number within the bounds of its spinner, whenever its change handler asks for it, in a way that a
/// number can still be typed whose beginning is out of bounds: when something takes the place of what is being typed
/// ("1" becomes "6"), it stands selected, and the next key goes on from what was typed ("2" gives "12"). A text that is
/// no number is taken back. Belongs to its box; made before a key filter, it sees only the keys that the filter lets
/// through.
class NumberBox : public QObject {
  Q_OBJECT

 public:
  NumberBox(QLineEdit* box, const UpDown* spinner);

  /// True when the text stands as it is; false when it was out of bounds, or no number, and another one took its place.
  bool Bound();
  /// Puts a text in the place of the one that may be being typed.
  void Replace(const QString& text);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* m_box;
  const UpDown* m_spinner;
  QString m_lastNumber;
  // What the user has just made of the text, until the change has been dealt with.
  std::optional<QString> m_typed;
  // What was being typed when something took its place, as long as that stands selected.
  std::optional<QString> m_replaced;
};

}  // namespace labels
