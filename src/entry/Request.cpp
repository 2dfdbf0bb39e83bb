#include "entry/Request.h"

#include "platform/automation/Error.h"

#include <QApplication>
#include <QThread>

using namespace framework;
using namespace Qt::StringLiterals;

namespace entry {
namespace {

// The runtime's number for what has no other.
constexpr int automationError = 440;

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

void DemandInterfaceThread() {
  const auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
  if (application == nullptr) {
    throw automation::Error(automationError,
                            u"KelConfiguracion necesita una QApplication: créela antes de la primera petición"_s);
  }
  if (QThread::currentThread() != application->thread()) {
    throw automation::Error(automationError,
                            u"KelConfiguracion solo se puede llamar desde el hilo de la interfaz de usuario"_s);
  }
}

}  // namespace entry
