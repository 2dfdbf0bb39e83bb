#pragma once

#include "framework/MaintenanceForm.h"

namespace reference {

/// The dialogs of the reference tables. Each is opened by a request of the host, or in the middle of another dialog
/// (MaintenanceForm::OpenNested).

/// Under the action `Nuevo` the caller may fix the diocese's province in `IDAux`.
std::unique_ptr<framework::MaintenanceForm> CreateFrmDiocesis();
std::unique_ptr<framework::MaintenanceForm> CreateFrmPais();
/// Under the action `Nuevo` the caller may fix the province's country in `IDAux`.
std::unique_ptr<framework::MaintenanceForm> CreateFrmProvincia();

}  // namespace reference
