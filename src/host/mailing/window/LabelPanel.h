#pragma once

#include "host/mailing/pieces/Choices.h"
#include "host/mailing/pieces/LabelMailing.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFontComboBox;
class QFormLayout;
class QLabel;
class QSpinBox;

namespace host {

class SheetStartPicture;

/// Which sheet is printed, where it begins and in which font.
class LabelPanel : public QWidget {
  Q_OBJECT

 public:
  explicit LabelPanel(QWidget* parent = nullptr);

  /// `mayKeep`: whether fonts can be kept with the sheets.
  void SetChoices(const Choices& choices, bool mayKeep);
  /// Makes a sheet the chosen one; one that is not there changes nothing.
  void Choose(int sheet);
  int Sheet() const;
  QString Name() const;
  void Fill(LabelWish& wish) const;
  /// Neither a sender's labels nor a sheet for bank disks.
  bool IsForPeople() const;
  /// The start is proposed anew with the next choices.
  void Forget() { m_forgets = true; }
  /// Says how many sheets that makes and where the last one ends.
  void Tell(const LabelMailing& labels);

 Q_SIGNALS:
  void Changed();
  void EditWanted(int sheet);
  /// The sheet's labels are to look so from now on.
  void FontChosen(int sheet, const documents::LabelFont& font);

 private:
  const SheetChoice* Chosen() const;
  QWidget* MakeSheetRow();
  QWidget* MakeWhomRow();
  QWidget* MakeStartRow();
  QWidget* MakeFontRow();
  void ShowSheet();
  void ShowFields();
  void Propose();
  void TakeStart();
  void TakeFont();

  QList<SheetChoice> m_sheets;
  bool m_forgets = false;
  QComboBox* m_sheet;
  QComboBox* m_whom;         ///< People, or a sender's letterhead.
  QSpinBox* m_senderCopies;  ///< So many of a sender's.
  QComboBox* m_issuer;       ///< Of bank disks.
  SheetStartPicture* m_picture;
  QSpinBox* m_first = nullptr;
  QLabel* m_result;
  QLabel* m_last;
  QCheckBox* m_copies;
  QFontComboBox* m_family = nullptr;
  QDoubleSpinBox* m_points = nullptr;
  QDoubleSpinBox* m_margin = nullptr;
};

}  // namespace host
