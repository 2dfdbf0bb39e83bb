#pragma once

#include <QString>

namespace texts {

/// `text` for a place that takes what looks like HTML for it and has no switch against that (a tool tip): markup that
/// shows it as it stands.
QString AsItStands(const QString& text);

}  // namespace texts
