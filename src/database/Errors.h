#pragma once

#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QStringView>

/// The errors of this library with their Spanish texts. Every function returns the error; the caller throws it.
namespace database {

/// 3021, 3265, 3704, 3705 and the two transaction numbers, with the platform's texts.
automation::Error PlatformError(int number);

/// `problem` says what is wrong with the statement; the text adds where.
automation::Error SyntaxErrorAt(const QString& problem, QStringView statement, qsizetype position);
automation::Error RefusedStatement(const QString& reason);
automation::Error MissingTable(QStringView name);
automation::Error MissingColumn(QStringView name);
automation::Error AmbiguousColumn(QStringView name);

/// 13 for a text where a number belongs; `column` may be empty.
automation::Error NotANumber(QStringView text, const QString& column);
/// 6 for a number that the column cannot hold.
automation::Error NumberTooBig(QStringView text, const QString& column);

automation::Error BadConnectionString(const QString& problem);
automation::Error BadSchema(int line, const QString& problem);

}  // namespace database
