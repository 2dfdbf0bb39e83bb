#include "host/services/ServiceClasses.h"

#include "host/services/cListas.h"
#include "host/services/cPrincipal.h"
#include "platform/automation/ClassRegistry.h"

using namespace Qt::StringLiterals;

namespace host {

void RegisterClasses(Session& session) {
  automation::RegisterClass(u"KelAPI.cPrincipal"_s, [&session] { return std::make_unique<cPrincipal>(session); });
  automation::RegisterClass(u"KelApi.cListas"_s, [&session] { return std::make_unique<cListas>(session); });
}

void UnregisterClasses() {
  automation::UnregisterClass(u"KelAPI.cPrincipal"_s);
  automation::UnregisterClass(u"KelApi.cListas"_s);
}

}  // namespace host
