#pragma once

#include <QtGlobal>

class QComboBox;

/// The item data (an identifier) of the selected item of a list, 0 when nothing is selected.
qint32 ItemData(const QComboBox* combo);
