#include "entry/Request.h"

using namespace framework;

namespace entry {
namespace {

int requestsUnderWay = 0;

}  // namespace

Request::Request(QObject* services) : m_isNested(requestsUnderWay > 0), m_outerServices(objApi()) {
  ++requestsUnderWay;
  objApi() = HostServices(services);
}

Request::~Request() {
  --requestsUnderWay;
  if (!m_isNested) {
    return;
  }
  objApi() = m_outerServices;
  try {
    OpenStored(objApi().congestion());
  } catch (...) {
    // The outer call meets the same refusal at its next statement, and reports it as its own.
    return;
  }
}

void OpenStored(adodb::Connection& connection) {
  if (connection.State() == adodb::StateClosed) {
    connection.Open({}, {}, {}, -1);
  }
}

}  // namespace entry
