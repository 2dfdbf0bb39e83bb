#include "remittances/PartyForm.h"

#include <QLineEdit>

using namespace framework;
using namespace Qt::StringLiterals;

namespace remittances {
namespace {

// What the host answers about a tax identifier; with any other answer the dialogs go on, as with a valid one.
enum Verdict : int { UnknownFormat = 2, WrongCheckCharacter = 3, WrongFirstLetter = 4 };

}  // namespace

void PartyForm::PadSuffixOnLeave(QLineEdit* suffix) {
  OnLeave(suffix, [suffix] {
    const QString typed = suffix->text().trimmed();
    if (!typed.isEmpty()) {
      suffix->setText(typed.rightJustified(suffixLength, u'0'));
    }
  });
}

bool PartyForm::IsTaxIdentifierAccepted(QLineEdit* box) {
  QString kind;
  QString control;
  switch (HostServices::Fresh().CIF_NIF_Valido(box->text().trimmed(), kind, control)) {
    case UnknownFormat: {
      const bool organisation = kind == u"CIF"_s;
      return Confirm(box, LoadResString(organisation ? 8104 : 8106) + u'\n' + LoadResString(organisation ? 8105 : 8107),
                     vbQuestion);
    }
    case WrongCheckCharacter:
      return Refuse(box, LoadResString(8108) + kind + LoadResString(8109) + u'\n' + LoadResString(8110) + control,
                    vbInformation);
    case WrongFirstLetter:
      return Refuse(box, 8111, vbInformation);
    default:
      return true;
  }
}

bool PartyForm::IsSuffixAccepted(QLineEdit* box, const SuffixCheck& check) {
  const QString suffix = box->text().trimmed();
  const bool unchanged = IsModify() && Text(LookUp(u"sufijo", check.stored, Id())) == suffix;
  const bool unasked = unchanged || !(IsAdd() || IsModify());
  if (unasked || Execute(check.owners, suffix)->AtEnd()) {
    return true;
  }
  return Confirm(box, LoadResString(IsAdd() ? check.questionOnAdd : check.questionOnModify), vbInformation);
}

bool PartyForm::Confirm(QLineEdit* box, const QString& question, int icon) {
  if (Ask(question, vbYesNo + icon) == vbYes) {
    return true;
  }
  box->setFocus();
  return false;
}

}  // namespace remittances
