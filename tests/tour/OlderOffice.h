#pragma once

#include "platform/adodb/Connection.h"

#include <QByteArray>

namespace tour {

/// The office of a database as another program would have kept it: a desktop database file of all tables that come in,
/// under other numbers, with some names of its own.
QByteArray OlderOffice(adodb::Connection& office);

/// A workbook of one sheet: a bank under another name, and a new one.
QByteArray BankList(adodb::Connection& office);

/// A list of members: the second one has the tax number of somebody in the office, and moved.
QByteArray MemberList(adodb::Connection& office);

}  // namespace tour
