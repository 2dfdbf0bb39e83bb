#pragma once

#include "platform/adodb/Connection.h"

#include <QString>
#include <QStringView>

/// Pieces of the statements that the services build.
namespace host {

/// A text between single quotes, its own quotes doubled.
QString SqlText(QStringView text);

/// The connection, opened when it was closed. Raises 91 for none.
adodb::Connection& Opened(adodb::Connection* connection);

}  // namespace host
