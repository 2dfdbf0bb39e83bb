#pragma once

#include "framework/MaintenanceForm.h"

namespace labels {

/// The dialog of label sheets, opened by a request of the host.
std::unique_ptr<framework::MaintenanceForm> CreateFrmEtiquetas1();

}  // namespace labels
