#pragma once

#include "framework/MaintenanceForm.h"

/// Publications and what their subscribers pay.

std::unique_ptr<MaintenanceForm> CreateFrmPublicacion();
