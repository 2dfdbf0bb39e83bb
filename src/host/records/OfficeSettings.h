#pragma once

#include "platform/adodb/Connection.h"

#include <QString>

namespace host {

/// What holds for everybody who uses a database: the host's table Ajustes, a text for each name.

/// What stands under a name; `otherwise` where nothing does. Errors of the database leave both functions.
QString OfficeSetting(adodb::Connection& connection, const QString& name, const QString& otherwise = {});

void SetOfficeSetting(adodb::Connection& connection, const QString& name, const QString& value);

/// The name of the organisation, of 100 characters at most; may be empty. Errors of the database leave it.
QString OfficeName(adodb::Connection& connection);

}  // namespace host
