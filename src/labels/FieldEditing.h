#pragma once

class QWidget;

namespace labels {

class FieldCollection;

/// Shows the field dialog for the sheet dialog: loaded with the caller's input off and behind the hourglass, and shown
/// unless it can't continue. `fields` is replaced when the user accepts the whole list, and else stays as it is. Errors
/// that the dialog lets out pass through.
void EditFields(FieldCollection& fields, QWidget& caller);

}  // namespace labels
