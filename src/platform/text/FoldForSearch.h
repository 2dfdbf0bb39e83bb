#pragma once

#include <QString>

namespace texts {

/// `text` as searches compare it: without regard to case, accents and compatibility forms ("Ñu" is "nu", "1ª" is
/// "1a"). The time grows with the length of the text, whatever stands in it.
QString FoldForSearch(const QString& text);

}  // namespace texts
