#pragma once

#include <QString>

#include <string_view>

namespace rtf {

inline constexpr int westernCodePage = 1252;
/// Text in symbol fonts: a byte is the private-use character U+F000 + byte.
inline constexpr int symbolCodePage = 42;

/// The code page of a font's character set (`\fcharset`); 0 where it is the document's.
/// Source: Rich Text Format Specification 1.9.1, "Font Table", `\fcharsetN`.
int CodePageOfCharset(int charset);

/// Whether characters of that code page may take more than one byte, which must then be decoded together.
bool IsMultiByte(int codePage);

/// Appends bytes as text. Line ends and other control characters except the tab are left out; bytes that the code page
/// does not have become U+FFFD. An unknown code page is taken as 1252.
void Decode(QString& text, std::string_view bytes, int codePage);

/// The byte of a character in code page 1252, or -1.
int WesternByte(char16_t character);

}  // namespace rtf
