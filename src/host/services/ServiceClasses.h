#pragma once

#include "host/records/Session.h"

/// The host's services as late-bound objects: `KelAPI.cPrincipal` (host::cPrincipal) and `KelApi.cListas`
/// (host::cListas).
namespace host {

/// Registers both classes: automation::CreateObject then makes objects bound to `session`, which must outlive them
/// and the registration.
void RegisterClasses(Session& session);
void UnregisterClasses();

}  // namespace host
