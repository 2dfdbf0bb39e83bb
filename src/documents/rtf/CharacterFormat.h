#pragma once

#include "documents/rtf/FontTable.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/Styles.h"

#include <QFont>
#include <QTextCharFormat>

namespace rtf {

/// The format that shows a style, `font` being that of the style's number. Every property that a widget's font could
/// supply is set, also where it is off; the automatic colours are left unset, so that a dark theme can choose.
/// Fields and objects (`link`) are the caller's.
QTextCharFormat ToCharacterFormat(const CharacterStyle& style, const Font& font);

/// The style that a format shows, what it lacks taken from `fallback`. `font` is set to the font; its number and the
/// link in the style are the caller's.
CharacterStyle FromCharacterFormat(const QTextCharFormat& format, const QFont& fallback, Font& font);

}  // namespace rtf
