#pragma once

#include "framework/MaintenanceForm.h"

namespace letters {

/// The dialogs of what is printed on letters. Each is opened by a request of the host.

std::unique_ptr<framework::MaintenanceForm> CreateFrmCabecera();
std::unique_ptr<framework::MaintenanceForm> CreateFrmCartaModelo();
std::unique_ptr<framework::MaintenanceForm> CreateFrmEncabezado();

}  // namespace letters
