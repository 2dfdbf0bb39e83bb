#pragma once

#include "framework/HostServices.h"

namespace entry {

/// One call of the host while it lasts: makes the services object that it brought the component's `objApi`.
///
/// A call that comes while another one is under way (from a timer or a socket of the host, or from a dialog that asks
/// for another node) gives the outer one its services object back at its end, whichever way it ends, and an open
/// connection. `objApi` of an outermost call stays set until the next one.
class Request {
 public:
  explicit Request(QObject* services);
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  ~Request();

 private:
  bool m_isNested;
  framework::HostServices m_outerServices;
};

/// Raises 440, with a text that says what to do, when a call that may show a window comes before there is a
/// QApplication or from another thread than its own: such a call could neither return nor fail by itself.
void DemandInterfaceThread();

/// Opens a closed connection with its own stored connection string; leaves an open one as it is.
void OpenStored(adodb::Connection& connection);

}  // namespace entry
