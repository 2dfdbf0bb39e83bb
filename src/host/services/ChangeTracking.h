#pragma once

#include <QObjectList>

/// Remembers what a dialog's controls hold and says later whether the user changed anything.
///
/// Looked at are the controls that a user edits: line and text edits, combos (selected item and edited text), check
/// boxes, radio buttons and checkable group boxes, spin boxes, date and time edits, sliders, and item views (what
/// their model shows). Parts of other controls, such as the list of a combo, are not
/// looked at on their own. Everything else is skipped.
namespace host {

/// Remembers the controls' present values, on the controls themselves, in place of what was remembered before.
void RememberControls(const QObjectList& controls);

/// True when a control holds something else than was remembered. A control without a memory counts as unchanged.
bool ControlsChanged(const QObjectList& controls);

}  // namespace host
