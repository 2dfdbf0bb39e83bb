#pragma once

#include <optional>
#include <string_view>

class QTextTable;

namespace documents {

/// The parameter of a word of the row's definition, as `\trkeep` or `\trrh`; 0 for a word without one, none where the
/// definition lacks the word.
std::optional<int> RowWord(const QTextTable& table, int row, std::string_view name);

}  // namespace documents
