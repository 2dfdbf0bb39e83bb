#pragma once

#include <QRectF>

class QWidget;

namespace host {

/// Where the envelopes of this user have their window, in millimetres from the corner of the folded-out letter. A
/// setting of the user's; values that make no sense are passed over.
QRectF EnvelopeWindow();

/// Asks for it and keeps it; false for a cancel.
bool AskForEnvelopeWindow(QWidget* parent);

}  // namespace host
