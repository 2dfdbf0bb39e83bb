#include "host/services/Statements.h"

#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace host {

QString SqlText(QStringView text) {
  QString quoted = text.toString();
  quoted.replace(u'\'', u"''"_s);
  return u'\'' + quoted + u'\'';
}

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
