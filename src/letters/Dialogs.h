#pragma once

#include "framework/MaintenanceForm.h"

/// The dialogs of what is printed on letters. Each is opened by a request of the host.

std::unique_ptr<MaintenanceForm> CreateFrmCabecera();
std::unique_ptr<MaintenanceForm> CreateFrmCartaModelo();
std::unique_ptr<MaintenanceForm> CreateFrmEncabezado();
