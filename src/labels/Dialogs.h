#pragma once

#include "framework/MaintenanceForm.h"

/// The dialog of label sheets, opened by a request of the host.
std::unique_ptr<MaintenanceForm> CreateFrmEtiquetas1();
