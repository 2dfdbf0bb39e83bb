#pragma once

class QObject;

namespace host {

/// Whether a dialog is one that the toolkit makes (a question, a printer's, files), and none of the component's.
bool IsBoxOfTheToolkit(const QObject& dialog);

}  // namespace host
