#pragma once

#include <QObject>

#include <memory>
#include <span>

namespace entry {

/// A class that the component publishes.
struct PublishedClass {
  QString progId;
  std::unique_ptr<QObject> (*create)();
};

std::span<const PublishedClass> PublishedClasses();

}  // namespace entry
