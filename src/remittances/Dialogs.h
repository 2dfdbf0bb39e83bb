#pragma once

#include "framework/MaintenanceForm.h"

/// The dialogs of the parties of direct-debit remittances. Each is opened by a request of the host; a presenter also in
/// the middle of another dialog (MaintenanceForm::OpenNested).

std::unique_ptr<MaintenanceForm> CreateFrmPresentador();
std::unique_ptr<MaintenanceForm> CreateFrmEmisor();
std::unique_ptr<MaintenanceForm> CreateFrmCobrador();
