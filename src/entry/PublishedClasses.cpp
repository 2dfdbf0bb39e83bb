#include "entry/PublishedClasses.h"

#include "banking/cSucursal.h"
#include "entry/CPrincipal.h"
#include "labels/cCampo.h"

#include <array>

using namespace Qt::StringLiterals;

namespace entry {
namespace {

template <typename Object>
std::unique_ptr<QObject> Create() {
  return std::make_unique<Object>();
}

}  // namespace

std::span<const PublishedClass> PublishedClasses() {
  static const std::array classes{
      PublishedClass{u"KelConfiguracion.CPrincipal"_s, &Create<CPrincipal>},
      PublishedClass{u"KelConfiguracion.cSucursal"_s, &Create<banking::cSucursal>},
      PublishedClass{u"KelConfiguracion.cCampo"_s, &Create<labels::cCampo>},
  };
  return classes;
}

}  // namespace entry
