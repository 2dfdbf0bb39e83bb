#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace letters {

class LetterEdit;

/// Finds a text of the letter and puts another one in its place, one by one or everywhere, and says how often it is
/// there.
class ReplaceDialog : public QDialog {
 public:
  /// `text` is what is looked for at first.
  ReplaceDialog(LetterEdit& letter, const QString& text, QWidget* parent);

  QString SoughtText() const;

 private:
  void AddButton(const char* name, const QString& text, void (ReplaceDialog::*work)());
  void FindNext();
  void ReplaceOne();
  void ReplaceAll();
  void ShowCount(const QString& done = {});

  LetterEdit& m_letter;
  QLineEdit* m_sought;
  QLineEdit* m_other;
  QLabel* m_count;
};

}  // namespace letters
