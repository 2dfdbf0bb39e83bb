#pragma once

#include "framework/MaintenanceForm.h"

namespace remittances {

/// The dialogs of the parties of direct-debit remittances. Each is opened by a request of the host; a presenter also in
/// the middle of another dialog (MaintenanceForm::OpenNested).

std::unique_ptr<framework::MaintenanceForm> CreateFrmPresentador();
std::unique_ptr<framework::MaintenanceForm> CreateFrmEmisor();
std::unique_ptr<framework::MaintenanceForm> CreateFrmCobrador();

}  // namespace remittances
