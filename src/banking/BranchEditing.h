#pragma once

#include "banking/cSucursal.h"

namespace banking {

/// One branch for the branch dialog, as the bank dialog hands it over.
struct BranchTask {
  cSucursal& branch;                 ///< Filled in or edited.
  const BranchCollection& branches;  ///< Where its code must be unique; the branch itself may be among them.
  bool isNew;
  QString bankNumber;
  QString bankName;
};

/// Shows the branch dialog for the bank dialog: nothing is written to the database. True when the user accepted; the
/// branch then holds what was typed, with its `Estado`. Errors that the dialog lets out pass through.
bool EditBranch(const BranchTask& task);

}  // namespace banking
