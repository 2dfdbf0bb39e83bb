#pragma once

#include <QList>
#include <QStringList>

namespace host {

/// Prints rows of equal length on the standard output, their columns as wide as their longest cells.
void PrintTable(const QList<QStringList>& table);

}  // namespace host
