#pragma once

#include "host/paper/ListTable.h"

/// A list with these columns and rows, as it stands in the window.
host::ListTable MakeList(const QList<host::ListColumn>& columns, const QList<QList<QVariant>>& rows);

/// Codes, names of a few letters and amounts.
host::ListTable Banks(int count);
