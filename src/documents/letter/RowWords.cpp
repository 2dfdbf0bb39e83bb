#include "documents/letter/RowWords.h"

#include "documents/rtf/Properties.h"
#include "documents/rtf/WordList.h"

#include <QTextTable>

#include <algorithm>

namespace documents {

std::optional<int> RowWord(const QTextTable& table, int row, std::string_view name) {
  int column = 0;
  while (column + 1 < table.columns() && table.cellAt(row, column).row() != row) {
    ++column;
  }
  const QString definition = table.cellAt(row, column).format().stringProperty(rtf::RowDefinitionProperty);
  if (!definition.contains(QLatin1StringView(name))) {
    return std::nullopt;
  }
  const QList<rtf::CarriedWord> words = rtf::WordsFromText(definition);
  const auto word = std::find_if(words.begin(), words.end(), [name](const rtf::CarriedWord& each) {
    return rtf::KeywordOf(each.word).name == name;
  });
  return word == words.end() ? std::nullopt : std::optional(word->parameter);
}

}  // namespace documents
