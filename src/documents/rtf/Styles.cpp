#include "documents/rtf/Styles.h"

#include <QHashFunctions>

#include <array>

namespace rtf {

namespace {

template <typename Kind, std::size_t size>
const char* Entry(const std::array<const char*, size>& words, Kind kind) {
  return words[static_cast<std::size_t>(kind)];
}

}  // namespace

size_t qHash(const CharacterStyle& style, size_t seed) {
  return qHashMulti(seed, style.font, style.halfPoints, style.colour, style.background, style.offset, style.link,
                    style.bold, style.italic, style.strike, int(style.underline), style.caps, style.smallCaps,
                    int(style.vertical), int(style.backgroundKind), style.hidden, style.rightToLeft, style.carried);
}

size_t qHash(const ParagraphStyle& style, size_t seed) {
  for (const TabStop& tab : style.tabs) {
    seed = qHashMulti(seed, tab.position, int(tab.kind), int(tab.leader), tab.bar);
  }
  return qHashMulti(seed, int(style.alignment), style.left, style.right, style.first, style.before, style.after,
                    style.lineSpacing, style.lineMultiple, style.rightToLeft, style.pageBreakBefore, style.inTable,
                    style.tableLevel, style.listNumber, style.listLevel, style.numbering, style.carried);
}

const char* WordOf(UnderlineKind kind) {
  static constexpr std::array words{"",          "ul",         "uld",     "uldash",    "uldashd", "uldashdd",
                                    "ulwave",    "uldb",       "ulw",     "ulth",      "ulthd",   "ulthdash",
                                    "ulthdashd", "ulthdashdd", "ulldash", "ulthldash", "ulhwave", "ululdbwave"};
  return Entry(words, kind);
}

const char* WordOf(BackgroundKind kind) {
  static constexpr std::array words{"highlight", "cb", "chcbpat"};
  return Entry(words, kind);
}

const char* WordOf(Alignment alignment) {
  static constexpr std::array words{"", "qc", "qr", "qj"};
  return Entry(words, alignment);
}

const char* WordOf(TabKind kind) {
  static constexpr std::array words{"", "tqc", "tqr", "tqdec"};
  return Entry(words, kind);
}

const char* WordOf(TabLeader leader) {
  static constexpr std::array words{"", "tldot", "tlmdot", "tlhyph", "tlul", "tlth", "tleq"};
  return Entry(words, leader);
}

}  // namespace rtf
