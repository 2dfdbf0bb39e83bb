#pragma once

#include "platform/adodb/Connection.h"

#include <QStringList>

class QTextDocument;

namespace host {

/// The lines of a letterhead (Cabeceras) that hold something. Raises 5, in words, where there is none of that number or
/// all its lines are empty.
QStringList ReadLetterhead(adodb::Connection& connection, int letterhead);

/// Puts the lines above a letter, in the font that it begins with.
void PutAbove(QTextDocument& letter, const QStringList& lines);

}  // namespace host
