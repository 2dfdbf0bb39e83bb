#pragma once

#include "framework/MaintenanceForm.h"

namespace taxes {

/// The dialogs of tax deductions: percentages, the communities that grant them, and the donations that earn them. Each
/// is opened by a request of the host, or in the middle of another dialog (MaintenanceForm::OpenNested).

std::unique_ptr<framework::MaintenanceForm> CreateFrmComunidadAutonoma();
std::unique_ptr<framework::MaintenanceForm> CreateFrmDeduccionComunidad();
std::unique_ptr<framework::MaintenanceForm> CreateFrmTipoDeduccion();
std::unique_ptr<framework::MaintenanceForm> CreateFrmTipoDonativo();

}  // namespace taxes
