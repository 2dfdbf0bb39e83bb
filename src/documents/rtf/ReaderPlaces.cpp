// Where the text stands, noted token by token: what a token adds to the text is what its bytes stand for.

#include "documents/rtf/CodePages.h"
#include "documents/rtf/Reader.h"

#include <algorithm>
#include <utility>

namespace rtf {

namespace {

// GB 18030 and UTF-8.
constexpr std::size_t longestCharacter = 4;

/// How many of the bytes from `begin` on are the first character, which is decoded to `text`.
std::size_t FirstCharacter(std::string_view bytes, int codePage, QString& text) {
  std::size_t count = 1;
  for (; count <= std::min(longestCharacter, bytes.size()); ++count) {
    text.clear();
    Decode(text, bytes.substr(0, count), codePage);
    if (!text.isEmpty() && !text.contains(QChar::ReplacementCharacter)) {
      return count;
    }
  }
  return bytes.size();
}

bool BeginsGroup(const Token& token) {
  const Keyword* keyword = token.kind == TokenKind::Word ? FindKeyword(token.text) : nullptr;
  return keyword != nullptr && IsDestination(keyword->action);
}

}  // namespace

void Reader::NotePlaces(TextPlaces& places, qsizetype before) {
  m_places = &places;
  m_placesBefore = before;
  m_builder.OnBlock([&places](int paragraph, const QTextBlock& block) { places.PutInto(paragraph, block); });
}

void Reader::HandleNoted(const Token& token) {
  if (token.kind != TokenKind::Text && token.kind != TokenKind::Hex) {
    FlushNoted();
  }
  const int paragraph = m_builder.Paragraphs();
  const qsizetype length = m_builder.Text().size();
  const std::size_t waiting = m_bytes.size();
  const int skip = m_skip;
  const bool endsHidden = !m_hidden.isEmpty();
  const auto skipped = [&] { return static_cast<std::size_t>(std::max(0, skip - m_skip)); };
  const bool isPlace = !Top().character.hidden && !m_starred;
  const TextPlaces::Place end = PlaceHere(0, token.begin, token.begin);
  Handle(token);
  if (m_builder.Paragraphs() != paragraph) {
    // In front of a word whose group is the letter's own, text would change what that is; behind its star part them.
    if (length == 0 && !endsHidden && isPlace && !BeginsGroup(token)) {
      m_places->EndParagraph(paragraph, end);
    }
  } else if (m_bytes.size() > waiting) {
    NoteText(token, 0, skipped());
    NoteBytes(token, m_bytes.size() - waiting);
  } else if (token.kind != TokenKind::GroupStart && token.kind != TokenKind::GroupEnd) {
    // Hidden text in front of it became an object.
    const int objects = endsHidden && m_hidden.isEmpty() ? 1 : 0;
    NoteText(token, m_builder.Text().size() - length - objects, skipped());
  }
}

TextPlaces::Place Reader::PlaceHere(qsizetype length, std::size_t begin, std::size_t end) {
  // Asking must not settle it: the code page of the document may still come.
  const int known = m_codePage;
  const int codePage = CodePage();
  m_codePage = known;
  return {.start = m_builder.Text().size() - length,
          .length = length,
          .begin = m_placesBefore + static_cast<qsizetype>(begin),
          .end = m_placesBefore + static_cast<qsizetype>(end),
          .codePage = codePage,
          .unicodeSkip = Top().unicodeSkip};
}

/// `grown` characters of text more; `skipped` is what of the token is the fallback of the character before.
void Reader::NoteText(const Token& token, qsizetype grown, std::size_t skipped) {
  const bool isText = token.kind == TokenKind::Text;
  const std::size_t begin = token.begin + (isText ? skipped : 0);
  if (skipped > 0 && m_fallbackIsNoted) {
    m_places->Extend(m_builder.Paragraphs(), m_placesBefore + static_cast<qsizetype>(isText ? begin : token.end),
                     m_skip == 0);
  }
  const bool isNoted = grown > 0 && m_builder.LastObject() == nullptr;
  if (isNoted) {
    TextPlaces::Place place = PlaceHere(grown, begin, token.end);
    place.isPlain = isText && grown == static_cast<qsizetype>(token.end - begin);
    place.joins = token.kind != TokenKind::Word;
    m_places->Add(m_builder.Paragraphs(), place);
  }
  if (m_skip > 0 && skipped == 0) {
    m_fallbackIsNoted = isNoted;
  }
}

void Reader::NoteBytes(const Token& token, std::size_t count) {
  if (token.kind != TokenKind::Text) {
    m_byteRanges.emplace_back(token.begin, token.end);
    return;
  }
  for (std::size_t i = token.end - count; i < token.end; ++i) {
    m_byteRanges.emplace_back(i, i + 1);
  }
}

/// Bytes of a code page with characters of several bytes, character by character.
void Reader::FlushNoted() {
  if (m_bytes.empty()) {
    return;
  }
  const std::string bytes = m_bytes;
  const auto ranges = std::exchange(m_byteRanges, {});
  const int paragraph = m_builder.Paragraphs();
  const int page = m_bytesPage;
  FlushBytes();
  if (Top().character.hidden || m_builder.Paragraphs() != paragraph) {
    return;
  }
  QString text;
  QList<TextPlaces::Place> places;
  for (std::size_t at = 0; at < bytes.size();) {
    QString character;
    const std::size_t count = FirstCharacter(std::string_view(bytes).substr(at), page, character);
    TextPlaces::Place place = PlaceHere(0, ranges[at].first, ranges[at + count - 1].second);
    place.start = text.size();
    place.length = character.size();
    place.joins = true;
    places.append(place);
    text += character;
    at += count;
  }
  if (!m_builder.Text().endsWith(text)) {
    return;
  }
  for (TextPlaces::Place& place : places) {
    place.start += m_builder.Text().size() - text.size();
    m_places->Add(paragraph, place);
  }
}

}  // namespace rtf
