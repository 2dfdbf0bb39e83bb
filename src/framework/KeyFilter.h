#pragma once

#include <QObject>

#include <optional>

class QLineEdit;

namespace framework {

/// Governs what the user may put into a line edit: keys one by one, pasted and dropped text as a whole (PasteGuard).
/// Text that the program sets is left alone, whatever it is. The filter belongs to its box.
class KeyFilter : public QObject {
  Q_OBJECT

 public:
  enum Option {
    NoOptions = 0,
    /// A refused key beeps; a refused text that is pasted always does.
    BeepOnRefusal = 1,
    /// An accepted key that arrives while the box holds `maxLength` characters clears the box first, so that it starts
    /// a new value.
    ClearWhenFull = 2,
    /// A point that is typed or pasted is taken as a comma.
    PointIsComma = 4,
    /// The marks that people write into numbers (blanks, points, hyphens) are left out of a pasted text.
    MarksDropOut = 8,
  };
  Q_DECLARE_FLAGS(Options, Option)

  /// `allowed` decides over one character; `maxLength` 0 is no limit. Without ClearWhenFull a key beyond the limit is
  /// refused. Backspace and the keys that move or edit always pass.
  KeyFilter(QLineEdit* box, bool (*allowed)(QChar), int maxLength, Options options);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool OnKey(const QString& typed);
  std::optional<QString> Read(QString inserted) const;
  void Refuse();

  QLineEdit* m_box;
  bool (*m_allowed)(QChar);
  int m_maxLength;
  Options m_options;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(KeyFilter::Options)

/// The characters of the boxes that take digits only.
bool IsDigit(QChar c);
/// The characters of the boxes that take letters without accents, and digits.
bool IsLetterOrDigit(QChar c);

}  // namespace framework
