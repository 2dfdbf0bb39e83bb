#include "database/sqlite/SpanishCollation.h"

#include "database/Errors.h"
#include "database/sqlite/SqliteTarget.h"

#include <sqlite3.h>
#include <unicode/ucol.h>
#include <unicode/uversion.h>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace database {

namespace {

std::string_view WithoutTrailingBlanks(std::string_view text) {
  while (!text.empty() && text.back() == ' ') {
    text.remove_suffix(1);
  }
  return text;
}

bool IsAsciiAt(std::string_view text, std::size_t position) {
  return position >= text.size() || static_cast<unsigned char>(text[position]) < 0x80;
}

int CompareForEngine(void* collation, int firstSize, const void* first, int secondSize, const void* second) {
  return static_cast<const SpanishCollation*>(collation)->Compare(
      {static_cast<const char*>(first), static_cast<std::size_t>(firstSize)},
      {static_cast<const char*>(second), static_cast<std::size_t>(secondSize)});
}

}  // namespace

const SpanishCollation& SpanishCollation::Instance() {
  static const SpanishCollation collation;
  return collation;
}

SpanishCollation::SpanishCollation() {
  UErrorCode status = U_ZERO_ERROR;
  UCollator* collator = ucol_open("es", &status);
  if (U_FAILURE(status)) {
    throw automation::Error(adodb::EngineFailure,
                            u"Faltan las reglas de ordenación del español (ICU). Vuelva a "
                            "instalar el programa."_s);
  }
  ucol_setStrength(collator, UCOL_SECONDARY);
  m_collator = collator;
  RankAscii();
}

void SpanishCollation::RankAscii() {
  std::vector<char> characters;
  for (char c = ' '; c <= '~'; ++c) {
    characters.push_back(c);
  }
  const auto compare = [this](char first, char second) {
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(m_collator, &first, 1, &second, 1, &status);
  };
  std::stable_sort(characters.begin(), characters.end(),
                   [&](char first, char second) { return compare(first, second) == UCOL_LESS; });
  unsigned char rank = 1;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    if (i > 0 && compare(characters[i - 1], characters[i]) != UCOL_EQUAL) {
      ++rank;
    }
    m_rank[static_cast<unsigned char>(characters[i])] = rank;
  }
}

// ASCII letters, digits and marks are compared by their ranks; ICU decides from the first pair on that holds
// anything else, and where a mark behind a letter could change it.
int SpanishCollation::Compare(std::string_view first, std::string_view second) const {
  first = WithoutTrailingBlanks(first);
  second = WithoutTrailingBlanks(second);
  const std::size_t common = std::min(first.size(), second.size());
  std::size_t i = 0;
  for (; i < common; ++i) {
    const int left = m_rank[static_cast<unsigned char>(first[i])];
    const int right = m_rank[static_cast<unsigned char>(second[i])];
    if (left == 0 || right == 0) {
      break;
    }
    if (left != right) {
      if (IsAsciiAt(first, i + 1) && IsAsciiAt(second, i + 1)) {
        return left - right;
      }
      break;
    }
  }
  if (i == common) {
    if (first.size() == second.size()) {
      return 0;
    }
    const std::string_view longer = first.size() > second.size() ? first : second;
    if (m_rank[static_cast<unsigned char>(longer[common])] != 0) {
      return first.size() > second.size() ? 1 : -1;
    }
  }
  UErrorCode status = U_ZERO_ERROR;
  return ucol_strcollUTF8(m_collator, first.data(), static_cast<int32_t>(first.size()), second.data(),
                          static_cast<int32_t>(second.size()), &status);
}

int SpanishCollation::Register(sqlite3* engine) const {
  return sqlite3_create_collation_v2(engine, sqlite::collation.toLatin1().constData(), SQLITE_UTF8,
                                     const_cast<SpanishCollation*>(this), CompareForEngine, nullptr);
}

QByteArray SpanishCollation::Version() const {
  UVersionInfo version;
  char text[U_MAX_VERSION_STRING_LENGTH];
  ucol_getVersion(m_collator, version);
  u_versionToString(version, text);
  return text;
}

}  // namespace database
