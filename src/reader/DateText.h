#pragma once

#include <QByteArray>

namespace reader {

/// Days since 1899-12-30, with the time of day behind the point, as a Date cell has it. Before that day the time still
/// goes forward, as the programs that count so have it. Empty for what is no date from the years 100 to 9999.
QByteArray DateText(double days);

}  // namespace reader
