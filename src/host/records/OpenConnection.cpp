#include "host/records/OpenConnection.h"

#include "platform/automation/Error.h"

namespace host {

adodb::Connection& Opened(adodb::Connection* connection) {
  if (connection == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
  if (connection->State() == adodb::StateClosed) {
    connection->Open();
  }
  return *connection;
}

}  // namespace host
