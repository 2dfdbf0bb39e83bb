#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

namespace database {

/// A connection that hands its statements on to another one. What this library offers beyond the contract (NewKeyOf,
/// Presence.h, Notices) reaches through it.
class KELDATOS_EXPORT ConnectionLayer : public adodb::Connection {
 public:
  ~ConnectionLayer() override;

  virtual adodb::Connection& Beneath() const = 0;
};

}  // namespace database
