#pragma once

#include "framework/MaintenanceForm.h"

namespace banking {

/// The dialogs of banks. Each is opened by a request of the host, or in the middle of another dialog
/// (MaintenanceForm::OpenNested).

std::unique_ptr<framework::MaintenanceForm> CreateFrmBanco();
/// A new branch, written at once, of the bank whose key is in `IDAux`.
std::unique_ptr<framework::MaintenanceForm> CreateFrmSucursal();

}  // namespace banking
