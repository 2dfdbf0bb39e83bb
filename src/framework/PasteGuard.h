#pragma once

#include <QObject>

#include <functional>
#include <optional>

class QLineEdit;

namespace framework {

/// Governs what comes into a line edit otherwise than by its keys: by the clipboard, by dropping, by an input method.
/// What fits stays, what doesn't is taken back as a whole with a beep, so that no text ever becomes another value. Text
/// that the program sets is left alone. Belongs to the box.
class PasteGuard : public QObject {
  Q_OBJECT

 public:
  /// What an inserted text becomes in the box; nothing where it does not fit. One that does not is tried once more
  /// without the blanks around it.
  using Reader = std::function<std::optional<QString>(const QString& inserted)>;

  /// `maxLength` bounds the whole text of the box; 0 is no bound.
  PasteGuard(QLineEdit* box, Reader read, int maxLength = 0);

  /// What is inserted meanwhile is a key's doing, and stays.
  void SetKeyUnderWay(bool underWay) { m_keyUnderWay = underWay; }

 private:
  void OnEdited(const QString& text);
  void Put(const QString& text, qsizetype caret);

  QLineEdit* m_box;
  Reader m_read;
  int m_maxLength;
  QString m_before;
  bool m_keyUnderWay = false;
};

}  // namespace framework
