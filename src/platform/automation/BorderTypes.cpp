#include "platform/adodb/Connection.h"
#include "platform/automation/Conversion.h"

#include <QObjectList>

// The types, beside Qt's own, that cross the border between host and component. They are registered when the platform
// is loaded, so that each is known by name from the first call on (by-reference parameters are looked up so) and none
// is registered from inside a component.
[[maybe_unused]] static const bool registered = [] {
  qRegisterMetaType<adodb::Connection*>("adodb::Connection*");
  qRegisterMetaType<automation::Currency>("automation::Currency");
  qRegisterMetaType<automation::Currency>("Currency");
  qRegisterMetaType<QObjectList>("QObjectList");
  return true;
}();
