#pragma once

#include <QString>

#include <string_view>

namespace database {

/// The text of the bytes that the engine holds. Unlike QString's own conversion it keeps a leading U+FEFF, which is a
/// character of the text here and no mark of an encoding.
QString TextFromEngine(std::string_view bytes);

}  // namespace database
