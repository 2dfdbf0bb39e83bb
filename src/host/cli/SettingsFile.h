#pragma once

#include <QString>

namespace host {

/// Before anything is read from the application's settings: a file that is damaged, or that a newer version wrote in
/// another format, is set aside under another name beside it, and the program goes on as on its first day. What was
/// done, in words; empty for nothing. A file that can't be written is left as it is.
QString PrepareSettings();

}  // namespace host
