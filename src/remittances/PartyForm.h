#pragma once

#include "framework/MaintenanceForm.h"

namespace remittances {

/// What a party's suffix is checked with: who has a suffix, what the record itself has, and what the user is asked when
/// another one has it (string numbers, for an addition and for a change).
struct SuffixCheck {
  adodb::Statement<QString> owners;
  adodb::Statement<qint32> stored;
  int questionOnAdd;
  int questionOnModify;
};

/// What the dialogs of presenters and issuers share: a tax identifier, and the suffix that tells several
/// parties of one tax identifier apart.
class PartyForm : public framework::MaintenanceForm {
  Q_OBJECT

 protected:
  static constexpr int suffixLength = 3;

  using MaintenanceForm::MaintenanceForm;

  /// Zeros fill the box up to three characters on the left when it is left, unless it is empty.
  void PadSuffixOnLeave(QLineEdit* suffix);

  /// Asks the host about the tax identifier. False, with the focus in the box, when it must be corrected, or when the
  /// user wants to correct one that no Spanish identifier looks like.
  bool IsTaxIdentifierAccepted(QLineEdit* box);

  /// False, with the focus in the box, when another record has the suffix and the user doesn't want it all the same.
  /// A record whose suffix was not changed is not asked about.
  bool IsSuffixAccepted(QLineEdit* box, const SuffixCheck& check);

 private:
  // Yes to the question; otherwise the focus is in the box.
  bool Confirm(QLineEdit* box, const QString& question, int icon);
};

}  // namespace remittances
