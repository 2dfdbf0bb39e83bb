#include "database/dialect/Lexer.h"

#include "database/Errors.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

// Marks of the shape; no statement holds them outside a literal, because they are no characters of the dialect.
constexpr char16_t textMark = u'\x01';
constexpr char16_t numberMark = u'\x02';

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

bool IsNameStart(QChar c) {
  const char16_t code = c.unicode();
  return (code >= u'a' && code <= u'z') || (code >= u'A' && code <= u'Z') || code == u'_' ||
         (code >= 0x80 && c.isLetter());
}

bool IsNamePart(QChar c) {
  return IsNameStart(c) || IsDigit(c) || (c.unicode() >= 0x80 && (c.isLetterOrNumber() || c.isMark()));
}

}  // namespace

void Lexer::Read(QStringView statement) {
  m_text = statement;
  m_position = 0;
  m_copied = 0;
  m_tokens.clear();
  m_literals.clear();
  m_shape.clear();
  while (m_position < m_text.size()) {
    if (m_text[m_position].isSpace()) {
      ++m_position;
    } else {
      ReadToken();
    }
  }
  m_shape.append(m_text.utf16() + m_copied, static_cast<std::size_t>(m_text.size() - m_copied));
  m_tokens.push_back({TokenKind::End, {}, m_text.size(), m_text.size(), -1});
}

void Lexer::ReadToken() {
  const QChar c = m_text[m_position];
  if (IsNameStart(c)) {
    ReadWord();
  } else if (IsDigit(c) || (c == u'.' && IsDigit(At(m_position + 1)) && !FollowsName())) {
    ReadNumber();
  } else if (c == u'\'' || c == u'"') {
    ReadText(c);
  } else if (c == u'[') {
    ReadBracketName();
  } else {
    ReadSymbol();
  }
}

bool Lexer::FollowsName() const {
  return !m_tokens.empty() && m_tokens.back().end == m_position &&
         (m_tokens.back().kind == TokenKind::Word || m_tokens.back().kind == TokenKind::BracketName);
}

void Lexer::ReadWord() {
  const qsizetype first = m_position;
  while (m_position < m_text.size() && IsNamePart(m_text[m_position])) {
    ++m_position;
  }
  Add(TokenKind::Word, first, m_position);
}

void Lexer::ReadNumber() {
  const qsizetype first = m_position;
  while (IsDigit(At(m_position))) {
    ++m_position;
  }
  if (At(m_position) == u'.') {
    ++m_position;
    while (IsDigit(At(m_position))) {
      ++m_position;
    }
  }
  const QChar e = At(m_position);
  if (e == u'e' || e == u'E') {
    const QChar next = At(m_position + 1);
    const bool isSigned = next == u'+' || next == u'-';
    if (IsDigit(next) || (isSigned && IsDigit(At(m_position + 2)))) {
      m_position += isSigned ? 2 : 1;
      while (IsDigit(At(m_position))) {
        ++m_position;
      }
    }
  }
  AddLiteral(TokenKind::Number, first, m_position, numberMark);
}

void Lexer::ReadText(QChar quote) {
  const qsizetype first = m_position++;
  for (;;) {
    const qsizetype end = m_text.indexOf(quote, m_position);
    if (end < 0) {
      throw SyntaxErrorAt(u"falta cerrar las comillas de un texto"_s, m_text, first);
    }
    m_position = end + 1;
    if (At(m_position) != quote) {
      break;
    }
    ++m_position;
  }
  AddLiteral(TokenKind::Text, first, m_position, textMark);
  for (std::vector<Token>* list : {&m_tokens, &m_literals}) {
    list->back().text = m_text.mid(first + 1, m_position - first - 2);
  }
}

void Lexer::ReadBracketName() {
  const qsizetype first = m_position;
  const qsizetype end = m_text.indexOf(u']', first);
  if (end <= first + 1) {
    throw SyntaxErrorAt(u"falta un nombre entre corchetes"_s, m_text, first);
  }
  m_position = end + 1;
  Add(TokenKind::BracketName, first, m_position);
  m_tokens.back().text = m_text.mid(first + 1, end - first - 1);
}

void Lexer::ReadSymbol() {
  constexpr QStringView pairs[] = {u"<>", u"<=", u">=", u"||"};
  constexpr QStringView singles = u"(),.;=<>+-*/\\&";
  const QStringView next = m_text.mid(m_position, 2);
  const bool mayBePair = m_text[m_position] == u'<' || m_text[m_position] == u'>' || m_text[m_position] == u'|';
  for (const QStringView pair : pairs) {
    if (mayBePair && next == pair) {
      m_position += 2;
      Add(TokenKind::Symbol, m_position - 2, m_position);
      return;
    }
  }
  if (!singles.contains(m_text[m_position])) {
    throw SyntaxErrorAt(u"hay un carácter que no es de una instrucción"_s, m_text, m_position);
  }
  ++m_position;
  Add(TokenKind::Symbol, m_position - 1, m_position);
}

void Lexer::Add(TokenKind kind, qsizetype first, qsizetype last) {
  m_tokens.push_back({kind, m_text.mid(first, last - first), first, last, -1});
}

void Lexer::AddLiteral(TokenKind kind, qsizetype first, qsizetype last, char16_t mark) {
  m_shape.append(m_text.utf16() + m_copied, static_cast<std::size_t>(first - m_copied));
  m_shape.push_back(mark);
  m_copied = last;
  m_tokens.push_back({kind, m_text.mid(first, last - first), first, last, static_cast<int>(m_literals.size())});
  m_literals.push_back(m_tokens.back());
}

}  // namespace database
