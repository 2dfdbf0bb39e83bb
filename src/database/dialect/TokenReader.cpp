#include "database/dialect/TokenReader.h"

#include "database/Errors.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr QStringView keywords[] = {
    u"ALL",    u"AND",  u"AS",    u"ASC",    u"BETWEEN", u"BY",     u"DELETE", u"DESC",  u"DISTINCT", u"EXISTS",
    u"FALSE",  u"FROM", u"GROUP", u"HAVING", u"IN",      u"INNER",  u"INSERT", u"INTO",  u"IS",       u"JOIN",
    u"LEFT",   u"LIKE", u"MOD",   u"NOT",    u"NULL",    u"ON",     u"OR",     u"ORDER", u"OUTER",    u"RIGHT",
    u"SELECT", u"SET",  u"TOP",   u"TRUE",   u"UNION",   u"UPDATE", u"VALUES", u"WHERE"};

bool IsKeyword(QStringView word) {
  return std::any_of(std::begin(keywords), std::end(keywords),
                     [&](QStringView keyword) { return word.compare(keyword, Qt::CaseInsensitive) == 0; });
}

}  // namespace

const Token& TokenReader::Peek(std::size_t ahead) const {
  return m_tokens[std::min(m_position + ahead, m_tokens.size() - 1)];
}

const Token& TokenReader::Take() {
  const Token& token = Peek();
  ++m_position;
  return token;
}

bool TokenReader::TakeWord(QStringView word) {
  if (!Peek().IsWord(word)) {
    return false;
  }
  ++m_position;
  return true;
}

bool TokenReader::TakeSymbol(QStringView symbol) {
  if (!Peek().IsSymbol(symbol)) {
    return false;
  }
  ++m_position;
  return true;
}

void TokenReader::ExpectWord(QStringView word) {
  if (!TakeWord(word)) {
    Fail(u"se esperaba %1"_s.arg(word));
  }
}

void TokenReader::ExpectSymbol(QStringView symbol) {
  if (!TakeSymbol(symbol)) {
    Fail(u"se esperaba «%1»"_s.arg(symbol));
  }
}

QStringView TokenReader::ExpectName() {
  if (!IsName()) {
    Fail(u"se esperaba un nombre"_s);
  }
  return Take().text;
}

bool TokenReader::IsName(std::size_t ahead) const {
  const Token& token = Peek(ahead);
  return token.kind == TokenKind::BracketName || (token.kind == TokenKind::Word && !IsKeyword(token.text));
}

void TokenReader::Fail(const QString& problem) const {
  throw SyntaxErrorAt(problem, m_statement, Peek().position);
}

}  // namespace database
