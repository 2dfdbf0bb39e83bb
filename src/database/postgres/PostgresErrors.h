#pragma once

#include "database/ConnectionString.h"
#include "database/Schema.h"
#include "database/engine/ParameterValues.h"
#include "platform/automation/Error.h"

#include <QByteArray>

#include <vector>

struct pg_conn;
struct pg_result;

namespace database {

/// The five characters of a refusal's number ("23505", appendix A of the PostgreSQL manual), empty where the server
/// said nothing, because the line is cut.
QByteArray SqlState(const pg_result* result);

/// Whether the refusal means that a transaction must be undone as a whole.
bool UndoesTransaction(const QByteArray& sqlState);

/// The error for a refusal of the server: a number of platform/adodb/ErrorNumbers.h (or 6, 13, 18) and a Spanish text.
/// The server's own text, whose language and content are its own, is never part of it; `concerned` is named where the
/// server names no table, column or constraint. `result` may be null.
automation::Error ServerError(const pg_result* result, const ConnectionString& target, const QString& concerned = {});

/// The tables as an error names them.
QString NamesOf(const std::vector<const Table*>& tables);

/// What the error of a statement names where the server names nothing: its table, the column of a text that is too long
/// for an index, the tables that it reads.
QString ConcernedBy(const Plan& plan, const ParameterValues& values);

/// The line was cut inside a transaction, which is undone.
automation::Error CutOff(const ConnectionString& target);

/// The line was cut where the server may have saved already.
automation::Error OutcomeUnknown(const ConnectionString& target);

/// The error for a connection that did not come to be.
automation::Error ConnectingError(const pg_conn* connection, const ConnectionString& target);

/// CannotOpen for a server that this program can't work with.
automation::Error UnusableServer(const ConnectionString& target, const QString& reason);

}  // namespace database
