#pragma once

#include <QString>

class QWidget;

namespace host {

/// What programs that read the screen are told of a window under a cover, a direct child named `coverName`: that
/// cover, and nothing of what lies behind it, whatever they knew before.
namespace covered {

inline const QString coverName = QStringLiteral("lockCover");

/// From now on; once is enough.
void TellReaders();
/// After a cover came or went.
void ForgetWhatWasTold(QWidget& window);

}  // namespace covered

}  // namespace host
