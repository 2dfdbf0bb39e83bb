#include "entry/Clases.h"

#include "banking/cSucursal.h"
#include "entry/CPrincipal.h"

#include <array>

namespace Clases {

namespace {

template <typename Objeto>
std::unique_ptr<QObject> Crear() {
  return std::make_unique<Objeto>();
}

}  // namespace

std::span<const Clase> Publicadas() {
  static const std::array clases{
      Clase{QStringLiteral("KelConfiguracion.CPrincipal"), &Crear<CPrincipal>},
      Clase{QStringLiteral("KelConfiguracion.cSucursal"), &Crear<cSucursal>},
  };
  return clases;
}

}  // namespace Clases
