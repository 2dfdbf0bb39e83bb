#pragma once

#include <QObject>

#include <memory>
#include <span>

/// The classes that the component publishes.
namespace Clases {

struct Clase {
  QString progId;
  std::unique_ptr<QObject> (*crear)();
};

std::span<const Clase> Publicadas();

}  // namespace Clases
