#pragma once

class QKeyEvent;
class QTextEdit;

namespace letters {

/// What keys do in tables and beside them: Tab goes to the next cell and with Shift to the one before; Delete over
/// whole rows that are empty removes them; Backspace behind a table and Delete in front of one do nothing, as what is
/// between is a joint (rtf::IsJoint). False for every other key.
bool HandleTableKey(QTextEdit& letter, const QKeyEvent& event);

/// Moves the caret, which came from the position `before`, past a joint, where nobody would see it; not where a joint
/// is the letter's first or last paragraph, so that text can be put in front of a table and behind it.
void LeaveJoint(QTextEdit& letter, int before);

}  // namespace letters
