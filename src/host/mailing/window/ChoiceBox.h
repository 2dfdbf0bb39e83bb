#pragma once

#include "host/mailing/pieces/Choices.h"

class QComboBox;

namespace host {

/// Puts the records into a box, without a signal; what was chosen stays so where it is still there.
void FillBox(QComboBox& box, const QList<Choice>& choices);

}  // namespace host
