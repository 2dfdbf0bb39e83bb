#pragma once

#include "host/mailing/pieces/Choices.h"
#include "host/mailing/pieces/LetterMailing.h"

#include <QWidget>

class QComboBox;
class QDateEdit;
class QFormLayout;
class QLineEdit;
class QSpinBox;

namespace host {

/// Which letter is written, and what it can't know from the tables. Of the fields only those show that the letter asks
/// for.
class LetterPanel : public QWidget {
  Q_OBJECT

 public:
  explicit LetterPanel(QWidget* parent = nullptr);

  void SetChoices(const QList<Choice>& letters, const QList<Choice>& letterheads);
  /// Makes a letter the chosen one; one that is not there changes nothing.
  void Choose(int letter);
  int Letter() const;
  QString Name() const;
  void Fill(LetterWish& wish) const;
  /// Shows the fields that the letter asks for.
  void Adapt(const LetterMailing& letters);
  /// What the letter asks for, no table knows and nobody has written: "Periodicidad del donativo".
  QStringList Missing() const;
  /// The field for the first of them.
  QWidget* MissingField() const;

 Q_SIGNALS:
  void Changed();
  /// The letter is to be opened.
  void EditWanted(int letter);

 private:
  QWidget* MakeLetterRow();
  QWidget* MakeDonationRow();
  void AddFields();
  void ShowRow(QWidget* field, bool visible);
  void ShowDates();
  void RememberSubject() const;

  QFormLayout* m_form;
  QComboBox* m_letter;
  QComboBox* m_letterhead;
  QComboBox* m_subject;
  QWidget* m_donations;
  QComboBox* m_which;
  QDateEdit* m_from;
  QDateEdit* m_until;
  QSpinBox* m_year;
  QDateEdit* m_date;
  QLineEdit* m_period;
  QLineEdit* m_receiver;
};

}  // namespace host
