#pragma once

#include "moving/Convert.h"

#include <QStringList>

namespace host {

/// What there is to say of a letter or a sheet of labels that comes in as it is: text that can't be opened, markers
/// that nothing replaces, sheets that the dialog would refuse or that no A4 holds. Nothing for other tables. Needs a
/// QGuiApplication.
QStringList InspectRecord(const database::Table& table, const QList<moving::Value>& values, const database::Stop& stop);

}  // namespace host
