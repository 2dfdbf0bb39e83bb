#pragma once

#include <QStringList>
#include <QWidget>

namespace support {

/// What those would stumble over who hear a window that is shown, go through it by the keyboard, or read it in large
/// letters: a control without a name or with another one's, a mnemonic that two have, a text that is cut off, a Tab
/// that goes against the eye, a focus that shows nowhere. All pages of its tabs are looked at. Empty when there is
/// nothing.
QStringList WindowFaults(QWidget& window);

}  // namespace support
