#include "documents/rtf/WordList.h"

#include "documents/rtf/Tokenizer.h"

#include <QByteArray>

#include <algorithm>

namespace rtf {

size_t qHash(const CarriedWord& word, size_t seed) {
  return qHashMulti(seed, word.head, word.word, word.hasParameter, word.parameter);
}

bool WordList::Contains(std::string_view name) const {
  return std::any_of(m_words.begin(), m_words.end(),
                     [name](const CarriedWord& word) { return KeywordOf(word.word).name == name; });
}

void WordList::Put(const Keyword& keyword, bool hasParameter, int parameter) {
  const auto [first, last] = std::equal_range(m_words.cbegin(), m_words.cend(), CarriedWord{keyword.id},
                                              [](const auto& a, const auto& b) { return a.head < b.head; });
  const CarriedWord word{keyword.id, keyword.id, hasParameter, parameter};
  if (last - first == 1 && *first == word) {
    return;
  }
  m_words.insert(m_words.erase(first, last), word);
}

void WordList::Attach(std::uint16_t head, const Keyword& keyword, bool hasParameter, int parameter) {
  const CarriedWord word{head, keyword.id, hasParameter, parameter};
  auto place = std::find_if(m_words.begin(), m_words.end(), [head](const auto& other) { return other.head == head; });
  if (place == m_words.end()) {
    return;
  }
  for (; place != m_words.end() && place->head == head; ++place) {
    if (place->word == word.word) {
      *place = word;
      return;
    }
  }
  m_words.insert(place, word);
}

QString ToText(const QList<CarriedWord>& words) {
  QString text;
  for (const CarriedWord& word : words) {
    const std::string_view name = KeywordOf(word.word).name;
    text += u'\\';
    text += QLatin1StringView(name.data(), static_cast<qsizetype>(name.size()));
    if (word.hasParameter) {
      text += QString::number(word.parameter);
    }
  }
  return text;
}

QList<CarriedWord> WordsFromText(QStringView text) {
  const QByteArray bytes = text.toLatin1();
  Tokenizer tokenizer({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  QList<CarriedWord> words;
  std::uint16_t head = 0;
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    const Keyword* keyword = token.kind == TokenKind::Word ? FindKeyword(token.text) : nullptr;
    if (keyword == nullptr) {
      continue;
    }
    if (keyword->action != Action::BorderAttribute) {
      head = keyword->id;
    }
    words.append({head, keyword->id, token.hasParameter, token.parameter});
  }
  return words;
}

}  // namespace rtf
