#pragma once

#include <QObject>

class QLineEdit;

namespace publications {

/// Puts every character that is typed into an amount box, backspace too, to whoever listens, before the box takes it.
/// What comes in otherwise (pasted, dropped, by an input method) keeps what an amount may hold: digits, comma, point,
/// minus, blank, euro sign. Text that the program sets is left alone. Belongs to its box.
class AmountKeys : public QObject {
  Q_OBJECT

 public:
  explicit AmountKeys(QLineEdit* box);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// `key` is the character's code; the listener may put another one there, or 0 for none.
  void Typed(int* key);

 private:
  void OnEdited(const QString& text);

  QLineEdit* m_box;
  bool m_isTyping = false;
};

}  // namespace publications
