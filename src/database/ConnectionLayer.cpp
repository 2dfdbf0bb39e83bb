#include "database/ConnectionLayer.h"

namespace database {

ConnectionLayer::~ConnectionLayer() = default;

}  // namespace database
