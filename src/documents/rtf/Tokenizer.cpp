#include "documents/rtf/Tokenizer.h"

#include <algorithm>
#include <array>
#include <limits>

namespace rtf {

namespace {

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsIgnored(char c) {
  return c == '\r' || c == '\n' || c == '\0';
}

constexpr std::array<bool, 256> textEnds = [] {
  std::array<bool, 256> ends{};
  for (const unsigned char c : {'\\', '{', '}', '\r', '\n', '\0'}) {
    ends[c] = true;
  }
  return ends;
}();

int HexValue(char c) {
  if (IsDigit(c)) {
    return c - '0';
  }
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

Token Tokenizer::Next() {
  while (m_position < m_input.size() && IsIgnored(m_input[m_position])) {
    ++m_position;
  }
  Token token;
  token.begin = m_position;
  token.end = m_position;
  if (m_position == m_input.size()) {
    return token;
  }
  switch (m_input[m_position]) {
    case '{':
      token.kind = TokenKind::GroupStart;
      ++m_position;
      break;
    case '}':
      token.kind = TokenKind::GroupEnd;
      ++m_position;
      break;
    case '\\':
      return ReadControl();
    default:
      token.kind = TokenKind::Text;
      while (m_position < m_input.size() && !textEnds[static_cast<unsigned char>(m_input[m_position])]) {
        ++m_position;
      }
      token.text = m_input.substr(token.begin, m_position - token.begin);
  }
  token.end = m_position;
  return token;
}

Tokenizer::Contents Tokenizer::SkipGroup() {
  std::size_t depth = 1;
  std::size_t lastComplete = m_position;
  while (true) {
    const Token token = Next();
    if (token.kind == TokenKind::End) {
      return {lastComplete, depth};
    }
    if (token.kind == TokenKind::GroupStart) {
      ++depth;
    } else if (token.kind == TokenKind::GroupEnd && --depth == 0) {
      return {token.begin, 0};
    }
    lastComplete = token.complete ? token.end : token.begin;
  }
}

Token Tokenizer::ReadControl() {
  Token token;
  token.begin = m_position++;
  if (m_position == m_input.size()) {
    token.kind = TokenKind::Symbol;
    token.byte = 0;
    token.complete = false;
    token.end = m_position;
    return token;
  }
  const char first = m_input[m_position];
  if (!IsLetter(first)) {
    ++m_position;
    if (first == '\'') {
      return ReadHex(token);
    }
    token.kind = TokenKind::Symbol;
    token.byte = first == '\r' ? '\n' : static_cast<unsigned char>(first);
    token.end = m_position;
    return token;
  }
  token.kind = TokenKind::Word;
  while (m_position < m_input.size() && IsLetter(m_input[m_position])) {
    ++m_position;
  }
  token.text = m_input.substr(token.begin + 1, m_position - token.begin - 1);
  ReadParameter(token);
  if (m_position < m_input.size() && m_input[m_position] == ' ') {
    ++m_position;
  }
  if (token.text == "bin") {
    ReadBinary(token);
  }
  token.end = m_position;
  return token;
}

void Tokenizer::ReadParameter(Token& token) {
  const std::size_t size = m_input.size();
  const bool negative = m_position + 1 < size && m_input[m_position] == '-' && IsDigit(m_input[m_position + 1]);
  if (negative) {
    ++m_position;
  }
  long long value = 0;
  constexpr long long most = std::numeric_limits<int>::max();
  while (m_position < size && IsDigit(m_input[m_position])) {
    value = std::min(value * 10 + (m_input[m_position] - '0'), most);
    token.hasParameter = true;
    ++m_position;
  }
  token.parameter = static_cast<int>(negative ? -value : value);
}

void Tokenizer::ReadBinary(Token& token) {
  token.kind = TokenKind::Binary;
  const std::size_t announced = token.parameter > 0 ? static_cast<std::size_t>(token.parameter) : 0;
  const std::size_t present = std::min(announced, m_input.size() - m_position);
  token.text = m_input.substr(m_position, present);
  token.complete = present == announced;
  m_position += present;
}

Token Tokenizer::ReadHex(Token token) {
  const std::size_t left = m_input.size() - m_position;
  const int high = left > 0 ? HexValue(m_input[m_position]) : -1;
  const int low = left > 1 ? HexValue(m_input[m_position + 1]) : -1;
  if (high >= 0 && low >= 0) {
    token.kind = TokenKind::Hex;
    token.byte = static_cast<unsigned char>(high * 16 + low);
    m_position += 2;
  } else {
    token.kind = TokenKind::Symbol;
    token.byte = '\'';
    token.complete = left > 1;
  }
  token.end = m_position;
  return token;
}

}  // namespace rtf
