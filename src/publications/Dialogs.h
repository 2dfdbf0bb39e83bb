#pragma once

#include "framework/MaintenanceForm.h"

namespace publications {

/// Publications and what their subscribers pay.

std::unique_ptr<framework::MaintenanceForm> CreateFrmPublicacion();

}  // namespace publications
