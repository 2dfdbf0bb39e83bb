#pragma once

#include <QByteArray>

#include <array>

/// A letter of which each byte is a piece: words and groups that change what stands around them, rows and text. Engines
/// that put bytes together come to such letters far sooner than to the same ones letter by letter.
inline QByteArray Spelled(const QByteArray& bytes) {
  static constexpr std::array pieces{
      // Text and what ends it.
      "a", "b", "uno ", "\\par ", "c\\par ", "\\pard ", "\\pard\\plain ", "\\line ", "\\page ", "\\sect ", "\\tab ",
      "\\~", "\\\n", "\\'e1", "\\u8364?", "\\uc2 ", "\\v ", "\\v0 ", "{", "}", "}{", "\\* ",
      // Formats.
      "\\b ", "\\b0 ", "\\plain ", "\\f1 ", "\\f2 ", "\\f7 ", "\\cf1 ", "\\caps ", "\\scaps ", "\\ul ", "\\highlight1 ",
      "\\chbrdr", "\\brdrb", "\\brdrs ", "\\brdrw15 ", "\\rtlch ", "\\qc ", "\\li300 ", "\\tqr", "\\tx500 ",
      "\\pagebb ", "\\keepn ", "\\s1 ", "\\ls1 ", "\\ls5 ", "\\ilvl1 ", "{\\*\\pn\\pnlvlbody\\pndec}",
      "{\\*\\pn\\pnlvlblt}", "{\\pntext 1\\tab}", "{\\pntext 2\\tab}",
      // Rows.
      "\\trowd\\cellx900 ", "\\trowd\\cellx900\\cellx1800\\intbl ", "\\cellx2700 ", "\\clmgf ", "\\clmrg ", "\\clvmgf ",
      "\\clvmrg ", "\\clbrdrt", "\\clcbpat1 ", "\\trhdr ", "\\intbl ", "\\cell ", "\\row ", "\\row\\pard ", "\\itap2 ",
      "\\nestcell ", "{\\*\\nesttableprops\\trowd\\cellx500\\nestrow}", "{\\nonesttables\\par}",
      // The section and the document.
      "\\sectd ", "\\cols2 ", "\\sbknone ", "\\titlepg ", "\\pgbrdrt", "{\\header h}", "{\\footer\\chpgn}",
      "\\paperw9000 ", "\\deftab300 ", "\\deff1 ", "\\ansicpg1251 ",
      "{\\fonttbl{\\f0 A;}{\\f1\\fcharset128 B;}{\\f2\\fcharset2 Symbol;}}", "{\\colortbl;\\red9\\green9\\blue9;}",
      "{\\stylesheet{\\s1\\b X;}}",
      "{\\*\\listtable{\\list{\\listlevel\\levelnfc0{\\leveltext\\'02\\'00.;}}\\listid7}}",
      "{\\*\\listoverridetable{\\listoverride\\listid7\\ls1}}",
      // What is kept at its place.
      "{\\field{\\*\\fldinst X}{\\fldrslt ", "{\\field{\\*\\fldinst HYPERLINK \"u\"}{\\fldrslt k}}",
      "{\\object{\\*\\objclass x}{\\result ", "{\\*\\unheard z}", "{\\footnote n}", "{\\*\\bkmkstart m}",
      "{\\pict\\pngblip 89}", "{\\*\\shppict{\\pict\\pngblip 89}}", "{\\nonshppict{\\pict\\wmetafile8 01}}",
      "{\\upr{a}{\\*\\ud b}}", "\\chpgn "};
  QByteArray letter = "{\\rtf1\\ansi ";
  for (const char byte : bytes) {
    letter += pieces[static_cast<unsigned char>(byte) % pieces.size()];
  }
  return letter + '}';
}
