#pragma once

#include <QObject>

class QLineEdit;

namespace framework {
class PasteGuard;
}

namespace publications {

/// Puts every character that is typed into an amount box, backspace too, to whoever listens, before the box takes it.
/// What comes in otherwise (pasted, dropped, by an input method) stays where it holds nothing but digits, comma, point,
/// minus, blank and euro sign (PasteGuard). Belongs to its box.
class AmountKeys : public QObject {
  Q_OBJECT

 public:
  explicit AmountKeys(QLineEdit* box);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// `key` is the character's code; the listener may put another one there, or 0 for none.
  void Typed(int* key);

 private:
  QLineEdit* m_box;
  framework::PasteGuard* m_guard;
};

}  // namespace publications
